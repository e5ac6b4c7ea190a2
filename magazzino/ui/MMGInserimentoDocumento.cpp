#include "magazzino/ui/MMGInserimentoDocumento.h"

#include "host/users/Users.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/documents/StoredRows.h"
#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/EntryLine.h"
#include "magazzino/ui/StockLine.h"
#include "platform/core/Clock.h"
#include "platform/core/Format.h"
#include "platform/core/Translation.h"
#include "platform/data/DataSet.h"
#include "platform/ui/Caption.h"
#include "platform/ui/Look.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

const QStringList printedCommands = {u"actNuovo"_s,  u"actElimina"_s,  u"actSalva"_s,     u"actChiudi"_s, {},
                                     u"actStampa"_s, u"actSalvaPDF"_s, u"actInviaPosta"_s};

ui::EntryFormSpec formOf(const DocumentKind &kind, ui::EntryFormSpec form)
{
    form.caption = kind.entryCaption();
    form.menuCaption = kind.entryMenu();
    form.subject = core::tr("Il documento");
    return form;
}

} // namespace

TMMGInserimentoDocumento::TMMGInserimentoDocumento(const DocumentKind &kind, ui::EntryFormSpec behaviour,
                                                   QWidget *owner)
    : TMMGInserimento(formOf(kind, std::move(behaviour)), &Modulo().dataSet(kind.dataSet()), owner)
    , kind_(kind)
{
    setObjectName(u"MMGInserimento"_s + kind.formName);
    createHeading();
    mainLayout()->addWidget(pages(), 1);
    generalPage_ = addPage(kind.captions.generalPage);
    setTabOrder(number_->widget(), date_->widget());
    setTabOrder(date_->widget(), pages());

    if (!kind.editRight.isEmpty())
        refuseFirstIf([this] { return !mayEdit(kind_); }, host::missingRight);
    refuseIf([this] { return DocumentoExists(kind_, numero(), documentDate().year(), storedKey()); },
             u"Esiste già un documento con questo numero!"_s);
}

void TMMGInserimentoDocumento::createHeading()
{
    number_ = declare(new ui::IntegerField(
        {.name = u"txtNumero"_s, .label = u"N."_s, .column = u"NUMERO"_s, .minimum = 1, .initial = 1}, this));
    date_ = declare(new ui::DateField(
        {.name = u"txtData"_s, .label = u"Data"_s, .column = u"DATA"_s, .yearColumn = u"ANNO"_s}, this));
    number_->widget()->setToolTip(core::tr("Il numero del documento nel suo anno: proposto, si può cambiare."));
    date_->widget()->setToolTip(core::tr("La data del documento e dei suoi movimenti di magazzino."));
    auto *heading = new QGridLayout;
    place(heading, number_, 0, 0);
    place(heading, date_, 0, 1);
    heading->addWidget(createPrintedHint(), 0, 4);
    heading->setColumnStretch(4, 1);
    if (!kind_.editRight.isEmpty())
        heading->addWidget(createReadOnlyHint(), 0, 5);
    heading->addWidget(createLastTime(), 0, 6);
    mainLayout()->addLayout(heading);
}

QString TMMGInserimentoDocumento::recordName() const
{
    const QString number = u"%1 %2/%3"_s.arg(kind_.captions.shortName).arg(numero()).arg(documentDate().year());
    return counterpartName().isEmpty() ? number : number + u" · "_s + counterpartName();
}

QLabel *TMMGInserimentoDocumento::createReadOnlyHint()
{
    readOnly_ = ui::named(u"lblSolaLettura"_s, new QLabel(core::tr("Sola lettura"), this));
    readOnly_->setToolTip(core::tr("Per salvare serve il diritto \"%1\".").arg(kind_.editRight));
    QFont bold = readOnly_->font();
    bold.setBold(true);
    readOnly_->setFont(bold);
    return readOnly_;
}

void TMMGInserimentoDocumento::RidimensionaForm()
{
    setOpeningSize({1060, 620});
    setMinimumSize(720, 340);
}

void TMMGInserimentoDocumento::CreaGrigliaVuotaRigheDocumento()
{
    grid_->rowsModel().setRows({});
}

void TMMGInserimentoDocumento::RidimensionaGrigliaRigheDocumento()
{
    grid_->fitToWidth();
}

void TMMGInserimentoDocumento::finishLayout()
{
    RidimensionaForm();
    addPrintCommands();
    createBeside();
    createRowsPage();
    addFurtherPages();
    createNotesPage();
    mainLayout()->addWidget(createTotals());
    setFocusProxy(required_.first().first);
    addCommand({.name = u"actDuplica"_s,
                .caption = core::tr("Duplica"),
                .run = [this] { duplica(); },
                .icon = ui::Icon::Duplicate,
                .shortcut = QKeySequence(u"Ctrl+Shift+D"_s)});
    const QStringList duplicate = {{}, u"actDuplica"_s};
    start((kind_.print.report.isEmpty() ? ui::standardCommands : printedCommands) + duplicate);
    placeInMenu();
}

// Behind what every form's menu has: whatever has a key stands in it.
void TMMGInserimentoDocumento::placeInMenu()
{
    formMenu()->addSeparator();
    formMenu()->addAction(command(u"actComeUltimaVolta"_s));
    formMenu()->addSeparator();
    formMenu()->addAction(command(u"actScriviRiga"_s));
    formMenu()->addAction(command(u"actLettore"_s));
    formMenu()->addActions(findChild<QToolBar *>(u"tBarRighe"_s)->actions());
    formMenu()->addSeparator();
    formMenu()->addAction(command(u"actDocumentoSopra"_s));
    formMenu()->addAction(command(u"actDocumentoSotto"_s));
}

void TMMGInserimentoDocumento::createNotesPage()
{
    QWidget *page = addPage(kind_.captions.notesPage);
    notes_ = declare(new ui::MemoField({.name = u"txtNote"_s, .label = u"Note"_s, .column = u"NOTE"_s}, page));
    auto *layout = new QVBoxLayout(page);
    auto *label = new QLabel(notes_->label(), page);
    label->setBuddy(notes_->widget());
    layout->addWidget(label);
    layout->addWidget(notes_->widget());
}

bool TMMGInserimentoDocumento::mayStartNew()
{
    if (mayEdit(kind_))
        return true;
    host::refuseForRights(this);
    return false;
}

void TMMGInserimentoDocumento::createRowsPage()
{
    QWidget *page = addPage(kind_.captions.rowsPage);
    auto *layout = new QVBoxLayout(page);
    layout->setSpacing(2);
    QToolBar *bar = newToolBar(u"tBarRighe"_s);
    createRowCommands(bar);
    layout->addWidget(bar);
    grid_ = ui::named(kind_.captions.rowsGrid, new DocumentGrid(kind_, page));
    layout->addWidget(grid_, 1);
    createCopyCommands();
    createEntryLine(page);
    layout->addWidget(entry_);
    createStockLine(page);
    auto *below = new QHBoxLayout;
    below->addWidget(stock_, 1);
    below->addWidget(createReaderSwitch(page), 0, Qt::AlignTop);
    layout->addLayout(below);
    connect(grid_, &DocumentGrid::resized, this, &TMMGInserimentoDocumento::RidimensionaGrigliaRigheDocumento);
    connect(grid_, &DocumentGrid::typing, this, &TMMGInserimentoDocumento::SetTyping);
    connect(&grid_->rowsModel(), &DocumentRowsModel::cellEdited, this, &TMMGInserimentoDocumento::cellEdited);
    // Shown once the editor has closed: a box while it loses the focus would open it again.
    connect(&grid_->rowsModel(), &DocumentRowsModel::cellRefused, this, &TMMGInserimentoDocumento::cellRefused,
            Qt::QueuedConnection);
}

// Keys that have a name are not written as text: looking for it takes longer than making the command.
QList<ui::Command> TMMGInserimentoDocumento::rowCommands()
{
    const RowCommandCaptions &captions = kind_.captions.rows;
    return {
        {u"actAggiungiArticolo"_s, captions.articolo, [this] { aggiungiArticolo(); }, ui::Icon::Add,
         QKeySequence(Qt::CTRL | Qt::Key_Insert)},
        {u"actAggiungiServizio"_s, captions.servizio, [this] { aggiungiServizio(); }, ui::Icon::Service,
         QKeySequence(u"Ctrl+Shift+S"_s)},
        {u"actAggiungiTesto"_s, captions.testo, [this] { aggiungiTesto(); }, ui::Icon::Text, QKeySequence(u"Ctrl+T"_s)},
        {u"actAggiungiNonImponibile"_s, captions.nonImponibile, [this] { aggiungiNonImponibile(); }, ui::Icon::Add,
         QKeySequence(u"Ctrl+Shift+N"_s)},
        {u"actEliminaRiga"_s, captions.elimina, [this] { eliminaRiga(); }, ui::Icon::Remove,
         QKeySequence(Qt::CTRL | Qt::Key_Delete)},
        {u"actSpostaRigaSu"_s, captions.su, [this] { spostaRiga(-1); }, ui::Icon::Up,
         QKeySequence(Qt::CTRL | Qt::Key_Up)},
        {u"actSpostaRigaGiu"_s, captions.giu, [this] { spostaRiga(1); }, ui::Icon::Down,
         QKeySequence(Qt::CTRL | Qt::Key_Down)},
    };
}

void TMMGInserimentoDocumento::createRowCommands(QToolBar *bar)
{
    for (ui::Command command : rowCommands()) {
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
    auto *line = ui::withoutMargins<QHBoxLayout>(box);
    line->addStretch();
    for (const DocumentTotal &total : kind_.totals) {
        if (total.caption.isEmpty())
            continue;
        line->addSpacing(ui::Look::sections - ui::Look::between);
        auto *title = new ui::Caption(total.caption, ui::Caption::Place::Following, box);
        title->setQuiet();
        // Once numbers need more room than the smallest form has, the captions are cut and not the numbers.
        title->setMinimumWidth(1);
        line->addWidget(title);
        line->addWidget(createTotal(total, box));
    }
    box->setMinimumWidth(box->sizeHint().width());
    box->setHidden(totalLabels_.isEmpty());
    return box;
}

QLabel *TMMGInserimentoDocumento::createTotal(const DocumentTotal &total, QWidget *box)
{
    auto *label = ui::named(total.control, new QLabel(box));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (total.column == kind_.totals.constLast().column) {
        constexpr double larger = 1.2;
        QFont bold = label->font();
        bold.setBold(true);
        bold.setPointSizeF(bold.pointSizeF() * larger);
        label->setFont(bold);
    }
    label->setMinimumWidth(QFontMetrics(label->font()).horizontalAdvance(u"€ 999.999,99"_s));
    totalLabels_.append({total, label});
    return label;
}

void TMMGInserimentoDocumento::showTotals(const std::function<double(const DocumentTotal &)> &amountOf)
{
    for (const auto &[total, label] : std::as_const(totalLabels_)) {
        label->setText(core::formatCurrency(amountOf(total)));
        label->setMinimumWidth(std::max(label->minimumWidth(), label->sizeHint().width()));
    }
}

DocumentTotals TMMGInserimentoDocumento::AggiornaTotaliDocumento()
{
    // Else nobody sees the tax.
    if (!totalLabels_.isEmpty())
        rates_ = vatRatesOf(grid_->rowsModel().rows());
    return computeTotals();
}

DocumentTotals TMMGInserimentoDocumento::computeTotals()
{
    const VatRateOf rateOf = [this](int key) -> std::optional<double> {
        // Nobody sees or stores the tax.
        const auto rate = totalLabels_.isEmpty() ? rates_.constEnd() : rates_.constFind(key);
        return rate != rates_.constEnd() ? std::optional(rate->aliquota) : std::nullopt;
    };
    grid_->rowsModel().updateRows(
        [&](QList<DocumentRow> &rows) { totals_ = recomputeDocument(rows, kind_.unitPrice, rateOf, isExempt()); });
    showTotals([this](const DocumentTotal &total) { return total.value(totals_); });
    return totals_;
}

// Rights may have changed since the form was opened.
void TMMGInserimentoDocumento::showRight(bool granted)
{
    if (readOnly_)
        readOnly_->setVisible(!granted);
}

void TMMGInserimentoDocumento::resetDetails()
{
    showRight(mayEdit(kind_));
    number_->setValue(GetNextNumeroDocumento(kind_, core::today().year()));
    entry_->clear();
    CreaGrigliaVuotaRigheDocumento();
    totals_ = {};
    showTotals([](const DocumentTotal &) { return 0; });
    counterpartChosen({});
    if (isAncestorOf(QApplication::focusWidget()))
        setFocus();
}
