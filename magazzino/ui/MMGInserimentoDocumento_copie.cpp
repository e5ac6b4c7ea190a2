// How documents and rows of them are copied.
#include "host/users/Users.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/documents/Catalogo.h"
#include "magazzino/ui/IncollaRighe.h"
#include "magazzino/ui/MMGInserimentoDocumento.h"
#include "platform/core/Clock.h"
#include "platform/core/CsvWriter.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/ListExport.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <set>

using namespace Qt::StringLiterals;

namespace {

bool hasPrices(const DocumentRow &row)
{
    return row.tipo == tipoRiga::articolo || row.tipo == tipoRiga::servizio;
}

// An article that is gone keeps what the document says of it.
void takeCurrentPrices(QList<DocumentRow> &rows)
{
    for (DocumentRow &row : rows) {
        const int id = hasPrices(row) ? Catalogo(row.tipo).trovaCodice(row.codice) : -1;
        if (const auto current = rigaDi(row.tipo, id)) {
            row.prezzo = current->prezzo;
            row.costo = current->costo;
        }
    }
}

} // namespace

void TMMGInserimentoDocumento::duplica()
{
    if (storedKey() < 0) {
        core::warn(this, core::tr("Il documento va prima salvato!"));
        return;
    }
    if (!finishEditing() || !mayStartNew())
        return;
    const QList<DocumentRow> rows = grid_->rowsModel().rows();
    core::Answer current = core::Answer::No;
    if (std::any_of(rows.begin(), rows.end(), hasPrices))
        current = core::showMessage(
            {core::tr("Duplica"),
             core::tr("Riprendere i prezzi attuali degli articoli?\n\rNo lascia quelli del documento."),
             core::MessageIcon::Question,
             {core::Answer::Yes, core::Answer::No, core::Answer::Cancel},
             this});
    if (current != core::Answer::Cancel)
        startCopyOf(rows, current == core::Answer::Yes);
}

// What is asked of the database comes first: when it fails, the document stays the one that is stored.
void TMMGInserimentoDocumento::startCopyOf(QList<DocumentRow> rows, bool currentPrices)
{
    int number = 0;
    {
        const ui::WaitCursor wait;
        number = GetNextNumeroDocumento(kind_, core::today().year());
        if (currentPrices)
            takeCurrentPrices(rows);
    }
    for (DocumentRow &row : rows)
        row.idRiga = -1;
    if (startCopy())
        fillCopy(number, rows);
}

void TMMGInserimentoDocumento::fillCopy(int number, const QList<DocumentRow> &rows)
{
    const ui::WaitCursor wait;
    pages()->setCurrentIndex(0);
    number_->setValue(number);
    date_->setDate(core::today());
    grid_->rowsModel().updateRows([&rows](QList<DocumentRow> &shown) { shown = rows; });
    forgetPrinted();
    leaveOutOfCopy();
    AggiornaTotaliDocumento();
    counterpartChosen({});
    SetModified(true);
}

void TMMGInserimentoDocumento::createCopyCommands()
{
    grid_->listExport().setCopy([this] { copiaRighe(); });
    auto *paste = ui::named(u"actIncollaRighe"_s, new QAction(core::tr("Incolla righe"), grid_));
    paste->setShortcut(QKeySequence::Paste);
    // Not in the editor of a cell, which takes a text.
    paste->setShortcutContext(Qt::WidgetShortcut);
    connect(paste, &QAction::triggered, this, [this] { core::guarded(this, [this] { incollaRighe(); }); });
    const QList<QAction *> actions = grid_->actions();
    grid_->insertAction(actions.value(1), paste);
}

// A single cell is copied as what it shows; its row goes along for other documents.
void TMMGInserimentoDocumento::copiaRighe()
{
    std::set<int> selected;
    const QModelIndexList indexes = grid_->selectionModel()->selectedIndexes();
    for (const QModelIndex &index : indexes)
        selected.insert(index.row());
    if (selected.empty())
        return;
    QList<DocumentRow> rows;
    for (const int row : selected)
        rows.append(grid_->rowsModel().rows()[row]);
    auto *copied = new QMimeData;
    copied->setText(indexes.size() == 1 ? core::clipboardText(ui::selectionOf(*grid_), false).chopped(1)
                                        : testoDiRighe(rows, kind_));
    copied->setData(tipoAppuntiRighe, righeInAppunti(rows));
    QGuiApplication::clipboard()->setMimeData(copied);
}

void TMMGInserimentoDocumento::incollaRighe()
{
    if (!finishEditing())
        return;
    if (!mayEdit(kind_)) {
        host::refuseForRights(this);
        return;
    }
    const QMimeData *copied = QGuiApplication::clipboard()->mimeData();
    const bool isOurs = copied && copied->hasFormat(tipoAppuntiRighe);
    const QList<RigaLetta> read =
        isOurs ? righeDaAppunti(copied->data(tipoAppuntiRighe)) : righeDaTesto(copied ? copied->text() : QString());
    if (read.isEmpty()) {
        core::warn(this,
                   core::tr("Negli appunti non ci sono righe.\n\rDa un foglio di calcolo: codice, quantità, prezzo."));
        return;
    }
    const QList<RigaIncollata> pasted = [&] {
        const ui::WaitCursor wait;
        return trovaRighe(read, kind_, grid_->rowsModel());
    }();
    QList<DocumentRow> rows;
    for (const RigaIncollata &row : pasted) {
        if (row.riga)
            rows.append(*row.riga);
    }
    if ((isOurs && rows.size() == pasted.size()) || confermaRighe(pasted, kind_, this))
        appendRows(rows);
}
