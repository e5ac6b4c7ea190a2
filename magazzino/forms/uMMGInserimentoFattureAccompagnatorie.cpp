#include "magazzino/forms/uMMGInserimentoFattureAccompagnatorie.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/documents/Proposte.h"
#include "magazzino/fatturapa/Registro.h"
#include "magazzino/ui/FatturaCiclicaField.h"
#include "magazzino/ui/FattureElettroniche.h"
#include "magazzino/ui/RecordChoice.h"
#include "platform/core/Clock.h"
#include "platform/core/Format.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"

#include <QGroupBox>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

// "Codice: ...", "Descrizione: ...", "Aliquota: ... %" of a row's VAT rate, for the hint over its cell.
QString vatHint(const DocumentRow &row)
{
    const TAliquotaIVA rate = GetAliquotaIVA(row.idAliquotaIVA.value_or(-1));
    if (rate.id <= 0)
        return {};
    return u"<b>Aliquota IVA</b><br>Codice: %1<br>Descrizione: %2<br>Aliquota: %3 %"_s.arg(
        rate.codice.toHtmlEscaped(), rate.descrizione.toHtmlEscaped(), core::formatNumber(rate.aliquota));
}

// What became of the stored invoice's file; empty while there is none.
template <typename File>
QString statoFile(const std::optional<File> &file)
{
    if (!file)
        return {};
    return core::tr("Fattura elettronica: %1, %2%3")
        .arg(file->nome, file->stato, file->modificata ? u" – "_s + fatturapa::modificataDopoInvio : QString());
}

} // namespace

TMMGInserimentoFattureAccompagnatorie::TMMGInserimentoFattureAccompagnatorie(QWidget *owner)
    : TMMGInserimentoScarico(fatturaAccompagnatoria(), owner)
{
    QAction *contacts = addCommand({.name = u"actVisualizzaContattiCliente"_s,
                                    .caption = core::tr("Visualizza contatti cliente"),
                                    .run = [this] { visualizzaContattiCliente(); },
                                    .icon = ui::Icon::Open});
    QGroupBox *customer = createAddresseeBox();
    fillAddresseeBox(customer, {{customerCommand(), u"cmdSelezionaCliente"_s, createCustomerInput(customer)},
                                {contacts, u"cmdVisualizzaContattiCliente"_s}});
    layOutGeneralPage(customer, [this] { return createPayment(); });

    refuseWithoutCustomer();
    require(
        payment_->input(), [this] { return payment_->key() <= 0; }, u"Non è stato selezionato un tipo di pagamento!"_s);
    require(
        transportType()->input(), [this] { return transportType()->key() <= 0; },
        u"Non è stato selezionato un tipo di trasporto!"_s);
    // Worded differently from the delivery note's; this is intended.
    require(
        transportReason()->input(), [this] { return transportReason()->key() <= 0; },
        u"Non è stata indicata la causale del trasporto!"_s);
    askWithoutTaxData();
    askIf([this] { return storedKey() > 0 && fatturapa::ultimoFile(connection(), storedKey()); },
          core::tr("Il file elettronico di questa fattura è già stato scritto:\n\rle modifiche non vi compariranno. "
                   "Salvarle comunque?"));

    file_ = ui::named(u"lblFatturaElettronica"_s, new QLabel(this));
    mainLayout()->insertWidget(mainLayout()->indexOf(pages()), file_);
    finishLayout();
    addOtherMenu();
    grid().rowsModel().setHint(&DocumentRow::codiceIVA, vatHint);
}

void TMMGInserimentoFattureAccompagnatorie::RidimensionaForm()
{
    TMMGInserimentoScarico::RidimensionaForm();
    setOpeningSize({1080, 720});
}

void TMMGInserimentoFattureAccompagnatorie::addFurtherPages()
{
    QWidget *page = addPage(u"Fatture cicliche"_s);
    recurrence_ = declare(new FatturaCiclicaField(page));
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(recurrence_->widget());
}

void TMMGInserimentoFattureAccompagnatorie::mostraFileElettronico(const QString &testo)
{
    file_->setText(testo);
    file_->setHidden(testo.isEmpty());
}

void TMMGInserimentoFattureAccompagnatorie::clearDetails()
{
    TMMGInserimentoScarico::clearDetails();
    mostraFileElettronico({});
    proposedDue_ = {};
}

void TMMGInserimentoFattureAccompagnatorie::loadDetails()
{
    TMMGInserimentoScarico::loadDetails();
    mostraFileElettronico(statoFile(besideRows().file));
}

QVariant TMMGInserimentoFattureAccompagnatorie::detailState() const
{
    return TMMGInserimentoScarico::detailState().toList() << file_->text();
}

void TMMGInserimentoFattureAccompagnatorie::restoreDetails(const QVariant &state)
{
    TMMGInserimentoScarico::restoreDetails(state);
    mostraFileElettronico(state.toList().value(2).toString());
}

void TMMGInserimentoFattureAccompagnatorie::writeDetails()
{
    TMMGInserimentoScarico::writeDetails();
    savedFile_ = statoFile(fatturapa::segnaModificata(connection(), IdRecord()));
}

void TMMGInserimentoFattureAccompagnatorie::recordSaved()
{
    TMMGInserimentoScarico::recordSaved();
    mostraFileElettronico(savedFile_);
}

QGroupBox *TMMGInserimentoFattureAccompagnatorie::createPayment()
{
    auto *box = ui::named(u"grpPagamento"_s, new QGroupBox(core::tr("Pagamento"), generalPage()));
    payment_ = declare(
        new ui::ChoiceField({.name = u"txtTipoPagamento"_s,
                             .buttonName = u"cmdSelezionaTipoPagamento"_s,
                             .label = u"Tipo di pagamento"_s,
                             .keyColumn = u"IDTIPO_PAGAMENTO"_s,
                             .textColumn = u"TIPO_PAGAMENTO"_s,
                             .choose = [] { return chooseRecord(u"actModSelezionaTipoPagamento"_s); },
                             .source = textSource(u"TIPI_PAGAMENTO"_s, u"IDTIPO_PAGAMENTO"_s, u"TIPO_PAGAMENTO"_s)},
                            box));
    payment_->setRequired();
    due_ = declare(new ui::DateField(
        {.name = u"txtScadenzaPagamento"_s, .label = u"Scadenza pagamento"_s, .column = u"SCADENZA_PAGAMENTO"_s}, box));
    due_->widget()->setToolTip(core::tr("Proposta dal tipo di pagamento e dalla data della fattura; si può cambiare."));
    paid_ = declare(new ui::FlagField({u"chkPagato"_s, u"Pagato"_s, u"PAGATO"_s}, box));
    notified_ = declare(new ui::FlagField({u"chkNotificato"_s, u"Notificata"_s, u"NOTIFICATO"_s}, box));
    exempt_ = declare(new ui::FlagField({u"chkIVAEsente"_s, u"Fattura esente IVA"_s, u"IVA_ESENTE"_s}, box));
    auto *grid = new QGridLayout(box);
    place(grid, payment_, 0, 0);
    place(grid, due_, 0, 1);
    grid->addWidget(paid_->widget(), 0, 4);
    grid->addWidget(notified_->widget(), 0, 5);
    grid->addWidget(exempt_->widget(), 0, 6);
    grid->setColumnStretch(1, 1);
    connect(payment_, &ui::Field::edited, this, &TMMGInserimentoFattureAccompagnatorie::followPayment);
    connect(dateField(), &ui::Field::edited, this, &TMMGInserimentoFattureAccompagnatorie::followDate);
    return box;
}

// A payment type without days leaves the date to whoever types.
void TMMGInserimentoFattureAccompagnatorie::followPayment()
{
    core::guarded(this, [this] {
        proposedDue_ = ScadenzaPagamento(payment_->key(), documentDate());
        if (proposedDue_.isValid())
            due_->setDate(proposedDue_);
    });
}

// A due date that was typed stays when the invoice's date changes. While that is being typed it may be none.
void TMMGInserimentoFattureAccompagnatorie::followDate()
{
    if (documentDate().isValid() && proposedDue_.isValid() && due_->date() == proposedDue_)
        followPayment();
}

// Nobody has paid the copy, been told of it or sent it.
void TMMGInserimentoFattureAccompagnatorie::leaveOutOfCopy()
{
    TMMGInserimentoScarico::leaveOutOfCopy();
    paid_->setChecked(false);
    notified_->setChecked(false);
    recurrence_->clear();
    mostraFileElettronico({});
    due_->clear();
    followPayment();
}

QList<std::pair<ui::Field *, QString>> TMMGInserimentoFattureAccompagnatorie::asLastTime() const
{
    return QList<std::pair<ui::Field *, QString>>{{payment_, u"TIPO_PAGAMENTO"_s}} +
           TMMGInserimentoScarico::asLastTime();
}

void TMMGInserimentoFattureAccompagnatorie::addOtherMenu()
{
    auto *button = ui::named(u"cmdAltro"_s, new QToolButton(this));
    button->setText(u"Altro"_s);
    button->setPopupMode(QToolButton::InstantPopup);
    auto *menu = new QMenu(u"Altro"_s, button);
    menu->addAction(addCommand({.name = u"actInserisciNotaDocumento"_s,
                                .caption = core::tr("Inserisci nota documenti..."),
                                .run = [this] { inserisciNotaDocumento(); },
                                .icon = ui::Icon::Text}));
    menu->addAction(command(u"actVisualizzaContattiCliente"_s));
    menu->addAction(addCommand({.name = u"actFatturaElettronica"_s,
                                .caption = core::tr("Fattura elettronica..."),
                                .run = [this] { fatturaElettronica(); },
                                .icon = ui::Icon::Export}));
    button->setMenu(menu);
    // Some styles draw the menu's arrow over the text.
    button->setMinimumWidth(button->sizeHint().width() + 12);
    standardBar()->addSeparator();
    standardBar()->addWidget(button);
    formMenu()->addSeparator();
    formMenu()->addMenu(menu);
}

void TMMGInserimentoFattureAccompagnatorie::customerChosen(const TCliente &customer)
{
    if (customer.id > 0)
        showAddressee(customer);
}

bool TMMGInserimentoFattureAccompagnatorie::isExempt() const
{
    return exempt_->isChecked();
}

// By the code on the form, so that it works for an opened invoice as well.
void TMMGInserimentoFattureAccompagnatorie::visualizzaContattiCliente()
{
    if (addresseeCode().isEmpty()) {
        core::warn(this, u"Non è stato selezionato un cliente!"_s);
        return;
    }
    const TCliente customer = GetCliente(addresseeCode());
    core::inform(this, QStringList{u"Cliente: "_s + customer.ragioneSociale, u"Telefono 1: "_s + customer.telefono1,
                                   u"Telefono 2: "_s + customer.telefono2, u"Telefono 3: "_s + customer.telefono3,
                                   u"Fax: "_s + customer.fax, u"e-mail: "_s + customer.email}
                           .join(u"\n\r"_s));
}

void TMMGInserimentoFattureAccompagnatorie::inserisciNotaDocumento()
{
    const auto chosen = chooseRecord(u"actModSelezionaNotaDocumenti"_s);
    if (!chosen)
        return;
    const QString text = GetNotaDocumento(chosen->key);
    notes()->append((notes()->text().isEmpty() ? QString() : u"\n"_s) + text);
}

// The file is made from what is stored.
void TMMGInserimentoFattureAccompagnatorie::fatturaElettronica()
{
    if (NewRecord() || Modified())
        core::warn(this, core::tr("La fattura va prima salvata!"));
    else
        mostraFatturaElettronica(IdRecord());
}

void TMMGInserimentoFattureAccompagnatorie::ImpostaFatturaCiclica()
{
    // Asked for first: a database that does not answer leaves the invoice as it was.
    const int number = GetNextNumeroFattAcc(core::today().year());
    notes()->append(
        u"\n\rFattura ciclica\n\rRif. Fattura n. %1\n\rdel %2"_s.arg(numero()).arg(core::formatDate(documentDate())));
    numberField()->setValue(number);
    dateField()->setDate(core::today());
    recurrence_->disable();
    SetNewRecord(true);
    SetModified(true);
    SetIdRecord(-1);
    forgetPrinted();
    mostraFileElettronico({});
}
