#include "magazzino/ui/DocumentForm.h"

#include "host/users/Users.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/RecordChoice.h"
#include "platform/core/Clock.h"
#include "platform/core/Format.h"
#include "platform/core/Messages.h"
#include "platform/data/DataSet.h"
#include "platform/ui/Dialogs.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolTip>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

ui::EntryFormSpec namedDocument(ui::EntryFormSpec form)
{
    form.subject = u"Il documento"_s;
    return form;
}

} // namespace

TMMGInserimentoDocumento::TMMGInserimentoDocumento(const DocumentSpec &spec, QWidget *owner)
    : TMMGInserimento(namedDocument(spec.form), &Modulo().dataSet(spec.headerDataSet), owner)
    , spec_(spec)
{
    setOpeningSize({1060, 620});
    setMinimumSize(720, 340);

    number_ = declare(new ui::IntegerField(
        {.name = u"txtNumero"_s, .label = u"N."_s, .column = u"NUMERO"_s, .minimum = 1, .initial = 1}, this));
    date_ = declare(new ui::DateField(
        {.name = u"txtData"_s, .label = u"Data"_s, .column = u"DATA"_s, .yearColumn = u"ANNO"_s}, this));
    auto *heading = new QGridLayout;
    place(heading, number_, 0, 0);
    place(heading, date_, 0, 1);
    heading->setColumnStretch(4, 1);
    if (!spec.saveRight.isEmpty()) {
        readOnly_ = new QLabel(u"Sola lettura"_s, this);
        readOnly_->setObjectName(u"lblSolaLettura"_s);
        readOnly_->setToolTip(u"Per salvare serve il diritto \"%1\"."_s.arg(spec.saveRight));
        QFont bold = readOnly_->font();
        bold.setBold(true);
        readOnly_->setFont(bold);
        heading->addWidget(readOnly_, 0, 5);
    }
    heading->setHorizontalSpacing(8);
    mainLayout()->addLayout(heading);
    mainLayout()->addWidget(pages(), 1);
    generalPage_ = addPage(spec.generalPage);
    setTabOrder(number_->widget(), date_->widget());
    setTabOrder(date_->widget(), pages());
    setFocusProxy(number_->widget());

    if (!spec.saveRight.isEmpty())
        refuseFirstIf([this] { return !holdsSaveRight(); },
                      u"Non si dispone di diritti sufficienti per eseguire questa operazione."_s);
    refuseIf([this] { return spec_.numberExists(numero(), documentDate().year(), storedKey()); },
             u"Esiste già un documento con questo numero!"_s);
}

void TMMGInserimentoDocumento::finishLayout(const QStringList &commands)
{
    createRowsPage();
    addFurtherPages();
    QWidget *notesPage = addPage(spec_.notesPage);
    notes_ = declare(new ui::MemoField({.name = u"txtNote"_s, .label = u"Note"_s, .column = u"NOTE"_s}, notesPage));
    auto *notesLayout = new QVBoxLayout(notesPage);
    auto *notesLabel = new QLabel(notes_->label(), notesPage);
    notesLabel->setBuddy(notes_->widget());
    notesLayout->addWidget(notesLabel);
    notesLayout->addWidget(notes_->widget());
    if (spec_.showsTotals)
        mainLayout()->addWidget(createTotals());
    start(commands);
}

bool TMMGInserimentoDocumento::holdsSaveRight() const
{
    return spec_.saveRight.isEmpty() || UserHasAbilitazione(spec_.saveRight, GetKxCurrentUserName(), connection());
}

bool TMMGInserimentoDocumento::mayStartNew()
{
    if (holdsSaveRight())
        return true;
    host::refuseForRights(this);
    return false;
}

void TMMGInserimentoDocumento::createRowsPage()
{
    QWidget *page = addPage(spec_.rowsPage);
    auto *layout = new QVBoxLayout(page);
    layout->setSpacing(2);
    QToolBar *bar = newToolBar(u"tBarRighe"_s);
    createRowCommands(bar);
    layout->addWidget(bar);
    grid_ = new DocumentGrid(spec_.kind, page);
    grid_->setObjectName(spec_.gridName);
    layout->addWidget(grid_, 1);
    connect(grid_, &DocumentGrid::typing, this, &TMMGInserimentoDocumento::SetTyping);
    connect(&grid_->rowsModel(), &DocumentRowsModel::cellEdited, this, &TMMGInserimentoDocumento::cellEdited);
    // Shown once the editor has closed: a box while it loses the focus would open it again.
    connect(&grid_->rowsModel(), &DocumentRowsModel::cellRefused, this, &TMMGInserimentoDocumento::cellRefused,
            Qt::QueuedConnection);
}

void TMMGInserimentoDocumento::createRowCommands(QToolBar *bar)
{
    const RowCommandCaptions &captions = spec_.rowCommands;
    const QList<ui::Command> commands = {
        {u"actAggiungiArticolo"_s, captions.articolo, [this] { aggiungiArticolo(); }, ui::Icon::Add,
         QKeySequence(u"Ctrl+Ins"_s)},
        {u"actAggiungiServizio"_s, captions.servizio, [this] { aggiungiServizio(); }, ui::Icon::Service},
        {u"actAggiungiTesto"_s, captions.testo, [this] { aggiungiTesto(); }, ui::Icon::Text},
        {u"actAggiungiNonImponibile"_s, captions.nonImponibile, [this] { aggiungiNonImponibile(); }, ui::Icon::Add},
        {u"actEliminaRiga"_s, captions.elimina, [this] { eliminaRiga(); }, ui::Icon::Remove,
         QKeySequence(u"Ctrl+Del"_s)},
        {u"actSpostaRigaSu"_s, captions.su, [this] { spostaRiga(-1); }, ui::Icon::Up, QKeySequence(u"Ctrl+Up"_s)},
        {u"actSpostaRigaGiu"_s, captions.giu, [this] { spostaRiga(1); }, ui::Icon::Down, QKeySequence(u"Ctrl+Down"_s)},
    };
    for (ui::Command command : commands) {
        if (command.caption.isEmpty())
            continue;
        // A cell that refuses its text comes before any other row.
        command.run = [this, run = command.run] {
            if (finishEditing())
                run();
        };
        bar->addAction(addCommand(command));
    }
}

QWidget *TMMGInserimentoDocumento::createTotals()
{
    auto *box = new QWidget(this);
    auto *line = new QHBoxLayout(box);
    line->setContentsMargins(0, 0, 0, 0);
    line->addStretch();
    const QList<std::pair<QString, QString>> totals = {{u"lblTotaleImponibile"_s, u"Totale imponibile"_s},
                                                       {u"lblTotaleImposta"_s, u"Totale imposta"_s},
                                                       {u"lblTotaleDocumento"_s, u"Totale documento"_s}};
    for (const auto &[name, caption] : totals) {
        line->addSpacing(12);
        auto *title = new QLabel(caption, box);
        // Once numbers need more room than the smallest form has, the captions are cut and not the numbers.
        title->setMinimumWidth(1);
        line->addWidget(title);
        auto *value = new QLabel(box);
        value->setObjectName(name);
        value->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
        value->setMargin(4);
        value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        value->setMinimumWidth(fontMetrics().horizontalAdvance(u"-€ 99.999.999,99"_s) + 16);
        QFont bold = value->font();
        bold.setBold(totalLabels_.size() == 2);
        value->setFont(bold);
        line->addWidget(value);
        totalLabels_.append(value);
    }
    box->setMinimumWidth(box->sizeHint().width());
    return box;
}

void TMMGInserimentoDocumento::showTotals(double imponibile, double imposta, double documento)
{
    if (!spec_.showsTotals)
        return;
    const QList<double> totals = {imponibile, imposta, documento};
    for (qsizetype i = 0; i < totals.size(); ++i) {
        QLabel *label = totalLabels_[i];
        label->setText(core::formatCurrency(totals[i]));
        label->setMinimumWidth(std::max(label->minimumWidth(), label->sizeHint().width()));
    }
}

DocumentTotals TMMGInserimentoDocumento::AggiornaTotaliDocumento()
{
    const VatRateOf rateOf = [this](int key) -> std::optional<double> {
        if (!spec_.showsTotals)
            return {};
        const TAliquotaIVA rate = GetAliquotaIVA(key);
        return rate.id > 0 ? std::optional(rate.aliquota) : std::nullopt;
    };
    grid_->rowsModel().updateRows(
        [&](QList<DocumentRow> &rows) { totals_ = recomputeDocument(rows, spec_.kind.unitPrice, rateOf, isExempt()); });
    showTotals(totals_.imponibile, totals_.imposta, totals_.documento());
    return totals_;
}

// Rights may have changed since the form was opened.
void TMMGInserimentoDocumento::showRight()
{
    if (readOnly_)
        readOnly_->setVisible(!holdsSaveRight());
}

void TMMGInserimentoDocumento::resetDetails()
{
    showRight();
    number_->setValue(spec_.nextNumber(core::today().year()));
    grid_->rowsModel().setRows({});
    totals_ = {};
    showTotals(0, 0, 0);
}

// Row changes

void TMMGInserimentoDocumento::rowsChanged()
{
    SetModified(true);
    AggiornaTotaliDocumento();
    grid_->fitRowHeights();
}

void TMMGInserimentoDocumento::addRow(const DocumentRow &row)
{
    DocumentRowsModel &model = grid_->rowsModel();
    model.append(row);
    if (row.tipo == tipoRiga::testo) {
        // The totals stay as they are shown; this is intended.
        SetModified(true);
        grid_->fitRowHeights();
    } else {
        rowsChanged();
    }
    grid_->select(model.rowCount() - 1,
                  row.tipo == tipoRiga::testo ? RowMember(&DocumentRow::descrizione) : RowMember(spec_.kind.unitPrice));
    grid_->setFocus();
}

void TMMGInserimentoDocumento::aggiungiArticolo()
{
    if (const auto chosen = chooseRecord(u"actModSelezionaArticolo"_s))
        addChosen(tipoRiga::articolo, GetArticolo(chosen->key));
}

void TMMGInserimentoDocumento::aggiungiServizio()
{
    if (const auto chosen = chooseRecord(u"actModSelezionaServizio"_s))
        addChosen(tipoRiga::servizio, GetServizio(chosen->key));
}

template <typename Voce>
void TMMGInserimentoDocumento::addChosen(const QString &tipo, const Voce &voce)
{
    if (voce.id <= 0)
        return;
    addRow({.tipo = tipo,
            .codice = voce.codice,
            .descrizione = voce.descrizione,
            .idCategoria = voce.idCategoria,
            .costo = voce.costo,
            .prezzo = voce.prezzo,
            .quantita = 1,
            .importo = voce.prezzo,
            .idAliquotaIVA = voce.idAliquotaIVA,
            .codiceIVA = GetAliquotaIVA(voce.idAliquotaIVA).codice,
            .idUM = voce.idUM,
            .um = GetUM(voce.idUM).testo});
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
    grid_->setCurrentIndex(current.siblingAtRow(current.row() + step));
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
