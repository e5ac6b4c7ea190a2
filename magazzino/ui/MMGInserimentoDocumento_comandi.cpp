// How the rows of a document's form are added and changed.
#include "host/Corvane3Impl.h"
#include "magazzino/documents/Diritti.h"
#include "magazzino/documents/RigheAppunti.h"
#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/EntryLine.h"
#include "magazzino/ui/MMGInserimentoDocumento.h"
#include "magazzino/ui/RecordChoice.h"
#include "magazzino/ui/StockLine.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/UserSettings.h"

#include <QCheckBox>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

const QString readerSwitch = u"chkLettore"_s;

} // namespace

void TMMGInserimentoDocumento::createEntryLine(QWidget *page)
{
    const auto chooseArticle = [] {
        const auto chosen = chooseRecord(u"actModSelezionaArticolo"_s);
        return chosen ? std::optional(chosen->key) : std::nullopt;
    };
    entry_ = new DocumentEntryLine(
        kind_, *grid_,
        {rigaDi, chooseArticle, [this](const DocumentRow &row, bool scanned) { return addEntered(row, scanned); }},
        page);
    addCommand({.name = u"actScriviRiga"_s,
                .caption = core::tr("Scrivi una riga"),
                .run = [this] { startEntry(); },
                .icon = ui::Icon::Add,
                .shortcut = QKeySequence(u"Ctrl+I"_s)});
}

QWidget *TMMGInserimentoDocumento::createReaderSwitch(QWidget *page)
{
    const QString kind = u"interruttori"_s;
    const QString name = u"lettore"_s;
    const QString isOn = u"acceso"_s;
    auto *reader = ui::named(readerSwitch, new QCheckBox(core::tr("Lettore"), page));
    reader->setToolTip(core::tr(
        "Ciò che si scrive nel codice della riga nuova vale come letto da un lettore: Invio lo aggiunge subito"));
    // The place in the line stays, and Tab goes where it went.
    reader->setFocusPolicy(Qt::NoFocus);
    reader->setChecked(ui::remembered(kind, name).value(isOn).toBool());
    entry_->setReader(reader->isChecked());
    connect(reader, &QCheckBox::toggled, this, [this](bool on) { entry_->setReader(on); });
    connect(reader, &QCheckBox::clicked, this, [this, kind, name, isOn](bool on) {
        // One switch for all documents that are open.
        for (QCheckBox *other : GetMainForm()->findChildren<QCheckBox *>(readerSwitch))
            other->setChecked(on);
        core::guarded(this, [&] { ui::remember(kind, name, {{isOn, on}}); });
    });
    addCommand({.name = u"actLettore"_s,
                .caption = core::tr("Lettore"),
                .run = [reader] { reader->click(); },
                .icon = ui::Icon::Check,
                .shortcut = QKeySequence(u"Ctrl+Shift+L"_s)});
    return reader;
}

ScorteDi TMMGInserimentoDocumento::stockOf()
{
    if (!seesInvoices_)
        seesInvoices_ = puoVedere(fatturaAccompagnatoria());
    return {&kind_, {storedKey(), numero(), documentDate()}, customerCode(), *seesInvoices_};
}

void TMMGInserimentoDocumento::createStockLine(QWidget *page)
{
    stock_ = new DocumentStockLine(
        *grid_, [this] { return stockOf(); }, page);
    connect(entry_, &DocumentEntryLine::articleTaken, stock_, &DocumentStockLine::setTyped);
    connect(date_, &ui::Field::edited, stock_, &DocumentStockLine::forget);
    // The document's own movements are not in what was read.
    connect(this, &ui::EntryForm::stored, stock_, &DocumentStockLine::keep);
}

void TMMGInserimentoDocumento::startEntry()
{
    for (int i = 0; i < pages()->count(); ++i) {
        if (pages()->widget(i)->isAncestorOf(entry_))
            pages()->setCurrentIndex(i);
    }
    entry_->start();
}

void TMMGInserimentoDocumento::rowsChanged()
{
    SetModified(true);
    AggiornaTotaliDocumento();
    grid_->fitRowHeights();
}

void TMMGInserimentoDocumento::appendRows(const QList<DocumentRow> &rows)
{
    if (rows.isEmpty())
        return;
    DocumentRowsModel &model = grid_->rowsModel();
    for (const DocumentRow &row : rows)
        model.append(row);
    const bool areTexts =
        std::all_of(rows.begin(), rows.end(), [](const DocumentRow &row) { return row.tipo == tipoRiga::testo; });
    if (areTexts) {
        // The totals stay as they are shown; this is intended.
        SetModified(true);
        grid_->fitRowHeights();
    } else {
        rowsChanged();
    }
    grid_->select(model.rowCount() - 1, rows.last().tipo == tipoRiga::testo ? RowMember(&DocumentRow::descrizione)
                                                                            : RowMember(kind_.unitPrice));
}

void TMMGInserimentoDocumento::addRow(const DocumentRow &row)
{
    appendRows({row});
    grid_->setFocus();
}

// A row typed in the line under the grid. The focus stays there.
bool TMMGInserimentoDocumento::addEntered(const DocumentRow &row, bool scanned)
{
    // A cell that refuses its text comes before any other row.
    if (!finishEditing())
        return false;
    const ui::WaitCursor wait;
    DocumentRowsModel &model = grid_->rowsModel();
    const int same = scanned ? model.rowLike(row) : -1;
    if (same < 0) {
        appendRows({row});
        return true;
    }
    grid_->select(same, &DocumentRow::quantita);
    return model.raiseQuantity(same, row.quantita.value_or(0));
}

void TMMGInserimentoDocumento::aggiungiArticolo()
{
    addChosen(tipoRiga::articolo, u"actModSelezionaArticolo"_s);
}

void TMMGInserimentoDocumento::aggiungiServizio()
{
    addChosen(tipoRiga::servizio, u"actModSelezionaServizio"_s);
}

void TMMGInserimentoDocumento::addChosen(const QString &tipo, const QString &action)
{
    if (const auto chosen = chooseRecord(action)) {
        if (const auto row = rigaDi(tipo, chosen->key))
            addRow(*row);
    }
}

void TMMGInserimentoDocumento::aggiungiTesto()
{
    addRow({.tipo = tipoRiga::testo});
    grid_->edit(grid_->currentIndex());
}

void TMMGInserimentoDocumento::aggiungiNonImponibile()
{
    addRow({.tipo = tipoRiga::nonImponibile, .costo = 0, .prezzo = 0, .quantita = 1, .importo = 0});
}

void TMMGInserimentoDocumento::eliminaRiga()
{
    const int row = grid_->selectedRow();
    if (row < 0 || !core::confirmLoss(this, u"Eliminare la riga selezionata?"_s))
        return;
    grid_->rowsModel().remove(row);
    rowsChanged();
}

void TMMGInserimentoDocumento::spostaRiga(int step)
{
    const QModelIndex current = grid_->currentIndex();
    if (!current.isValid() || !grid_->rowsModel().move(current.row(), step))
        return;
    grid_->goTo(current.siblingAtRow(current.row() + step));
    grid_->fitRowHeights();
    SetModified(true);
}

void TMMGInserimentoDocumento::cellEdited()
{
    SetModified(true);
    core::guarded(this, [this] {
        const ui::WaitCursor wait;
        AggiornaTotaliDocumento();
    });
}

void TMMGInserimentoDocumento::cellRefused(const QString &text, bool unreadable)
{
    if (unreadable) {
        core::showError(this, text);
        return;
    }
    const QRect cell = grid_->visualRect(grid_->currentIndex());
    QToolTip::showText(grid_->viewport()->mapToGlobal(cell.bottomLeft()), text, grid_);
}

bool TMMGInserimentoDocumento::finishEditing()
{
    return grid_->finishEditing();
}
