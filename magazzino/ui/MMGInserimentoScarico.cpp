#include "magazzino/ui/MMGInserimentoScarico.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/ui/RecordChoice.h"
#include "magazzino/ui/TransportFields.h"
#include "platform/core/Translation.h"
#include "platform/ui/Look.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

// Positions of the copied texts in an addressee's labels.
constexpr int codeLabel = 0;
constexpr int nameLabel = 1;
constexpr int taxCodeLabel = 7;
constexpr int vatNumberLabel = 8;

ui::TextField *destinationField(const QString &name, const QString &label, const QString &column, int maxLength,
                                bool upperCase, QWidget *parent)
{
    return new ui::TextField(
        {.name = name, .label = label, .column = column, .maxLength = maxLength, .upperCase = upperCase}, parent);
}

} // namespace

// After a failed save the document counts as saved, so that the next save edits; this is intended.
TMMGInserimentoScarico::TMMGInserimentoScarico(const DocumentKind &kind, QWidget *owner)
    : TMMGInserimentoDocumento(
          kind, {.closing = ui::ClosingQuestion::SaveFirst, .afterFailedSave = ui::AfterFailedSave::AsAfterSave}, owner)
{
}

void TMMGInserimentoScarico::layOutGeneralPage(QWidget *addressee, const std::function<QWidget *()> &createBottom)
{
    auto *page = new QGridLayout(generalPage());
    // Close together, so that the whole page fits a screen of 768 lines.
    page->setContentsMargins(ui::Look::margin, ui::Look::lines, ui::Look::margin, 0);
    page->setHorizontalSpacing(ui::Look::sections);
    page->addWidget(addressee, 0, 0);
    page->addWidget(createDestination(), 0, 1);
    page->addWidget(createCarrier(), 1, 0);
    page->addWidget(createTransport(), 1, 1);
    if (createBottom)
        page->addWidget(createBottom(), 2, 0, 1, 2);
    page->setColumnStretch(0, 1);
    page->setColumnStretch(1, 1);
    page->setRowStretch(3, 1);
}

void TMMGInserimentoScarico::refuseWithoutCustomer()
{
    // The same text when the addressee is a supplier; this is intended.
    require(
        customerInput_, [this] { return addressee_->isEmpty(codeLabel); }, u"Non è stato selezionato un cliente!"_s);
}

void TMMGInserimentoScarico::askWithoutTaxData()
{
    askIf([this] { return addressee_->isEmpty(taxCodeLabel) && addressee_->isEmpty(vatNumberLabel); },
          u"Non sono stati indicati nè il codice fiscale, nè la partita IVA,\n\rproseguire comunque?"_s);
}

QAction *TMMGInserimentoScarico::customerCommand()
{
    return addCommand({.name = u"actSelezionaCliente"_s,
                       .caption = u"Cliente"_s,
                       .run =
                           [this] {
                               if (const auto chosen = chooseRecord(u"actModSelezionaCliente"_s))
                                   customerChosen(GetCliente(chosen->key));
                           },
                       .icon = ui::Icon::Choose,
                       .shortcut = QKeySequence(u"Ctrl+L"_s)});
}

ui::PickInput *TMMGInserimentoScarico::createCustomerInput(QWidget *box)
{
    customerInput_ = createPick(
        u"txtClienteCerca"_s, anagraficaSource(u"CLIENTI"_s, u"IDCLIENTE"_s),
        [this](int id) { customerChosen(GetCliente(id)); }, [this] { command(u"actSelezionaCliente"_s)->trigger(); },
        box);
    return customerInput_;
}

QGroupBox *TMMGInserimentoScarico::createAddresseeBox()
{
    auto *box = ui::named(u"grpAnagrafica"_s, new QGroupBox(u" Cliente "_s, generalPage()));
    addressee_ = declare(new ui::RecordLabels(anagraficaLabels(u"lbl"_s, u"CLI_"_s), box));
    return box;
}

void TMMGInserimentoScarico::fillAddresseeBox(QGroupBox *box, const QList<AddresseeButton> &buttons)
{
    auto *layout = new QVBoxLayout(box);
    auto *line = new QHBoxLayout;
    for (const AddresseeButton &button : buttons) {
        line->addWidget(commandButton(button.action, button.name, box));
        // One of them is enough, whichever.
        if (&button == &buttons.first())
            line->addWidget(ui::requiredMark(box));
        if (button.input)
            line->addWidget(button.input, 1);
    }
    line->addStretch();
    layout->addLayout(line);
    layout->addWidget(addressee_->widget());
    layout->addStretch();
}

void TMMGInserimentoScarico::showAddressee(const TCliente &addressee)
{
    addressee_->setValues(anagraficaValues(addressee));
    DataChanged();
    counterpartChosen(addressee.codice);
}

QString TMMGInserimentoScarico::addresseeCode() const
{
    return addressee_->isEmpty(codeLabel) ? QString() : addressee_->text(codeLabel);
}

QString TMMGInserimentoScarico::counterpartName() const
{
    return addressee_->isEmpty(nameLabel) ? QString() : addressee_->text(nameLabel);
}

QGroupBox *TMMGInserimentoScarico::createDestination()
{
    auto *box = ui::named(u"grpDestinazione"_s, new QGroupBox(u"Destinazione"_s, generalPage()));
    auto *name = declare(
        destinationField(u"txtDestRagioneSociale"_s, u"Ragione sociale"_s, u"DEST_RAGIONESOCIALE"_s, 100, false, box));
    auto *address =
        declare(destinationField(u"txtDestIndirizzo"_s, u"Indirizzo"_s, u"DEST_INDIRIZZO"_s, 50, false, box));
    auto *town = declare(destinationField(u"txtDestCitta"_s, u"Città"_s, u"DEST_CITTA"_s, 30, false, box));
    auto *postcode = declare(destinationField(u"txtDestCap"_s, u"CAP"_s, u"DEST_CAP"_s, 5, true, box));
    auto *province = declare(destinationField(u"txtDestProvincia"_s, u"Prov."_s, u"DEST_PROVINCIA"_s, 2, true, box));
    auto *country = declare(destinationField(u"txtDestNazione"_s, u"Nazione"_s, u"DEST_NAZIONE"_s, 30, false, box));
    name->widget()->setToolTip(
        core::tr("Dove va la merce, se non all'indirizzo del destinatario della fattura o del D.d.T."));
    auto *grid = new QGridLayout(box);
    place(grid, name, 0, 0, 3);
    place(grid, address, 1, 0, 3);
    place(grid, town, 2, 0);
    place(grid, postcode, 2, 1);
    place(grid, province, 2, 2);
    place(grid, country, 3, 0);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(4, 1);
    return box;
}

QGroupBox *TMMGInserimentoScarico::createCarrier()
{
    auto *box = ui::named(u"grpVettore"_s, new QGroupBox(u"Vettore"_s, generalPage()));
    carrier_ = declare(new ui::RecordLabels(anagraficaLabels(u"lblVett"_s, u"VETT_"_s, false), box));
    QAction *choose = addCommand({.name = u"actSelezionaVettore"_s,
                                  .caption = core::tr("Seleziona vettore..."),
                                  .run = [this] { selezionaVettore(); },
                                  .icon = ui::Icon::Choose});
    QAction *clear = addCommand({.name = u"actAnnullaSelezioneVettore"_s,
                                 .caption = core::tr("Annulla selezione"),
                                 .run =
                                     [this] {
                                         carrier_->clear();
                                         DataChanged();
                                     },
                                 .icon = ui::Icon::Clear});
    auto *layout = new QVBoxLayout(box);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(commandButton(choose, u"cmdSelezionaVettore"_s, box));
    auto *input = createPick(
        u"txtVettoreCerca"_s, anagraficaSource(u"VETTORI"_s, u"IDVETTORE"_s, false), [this](int id) { setCarrier(id); },
        [choose] { choose->trigger(); }, box);
    followUp(input);
    buttons->addWidget(input, 1);
    buttons->addWidget(commandButton(clear, u"cmdAnnullaSelezioneVettore"_s, box));
    buttons->addStretch();
    layout->addLayout(buttons);
    layout->addWidget(carrier_->widget());
    layout->addStretch();
    return box;
}

QGroupBox *TMMGInserimentoScarico::createTransport()
{
    auto *box = ui::named(u"grpTrasporto"_s, new QGroupBox(u"Trasporto"_s, generalPage()));
    transportType_ = declare(transportTypeField([] { return chooseRecord(u"actModSelezionaTipoTrasporto"_s); }, box));
    auto *appearance = declare(appearanceField(u"Aspetto dei beni"_s, box));
    transportReason_ = declare(new ui::ChoiceField(
        {.name = u"txtCausaleTrasporto"_s,
         .buttonName = u"cmdSelezionaCausaleTrasporto"_s,
         .label = u"Causale del trasporto"_s,
         .keyColumn = u"IDCAUSALE_TRASPORTO"_s,
         .textColumn = u"CAUSALE_TRASPORTO"_s,
         .choose = [] { return chooseRecordReading(u"actModSelezionaCausaleTrasporto"_s, GetCausaleTrasporto); },
         .source = textSource(u"CAUSALI_TRASPORTO"_s, u"IDCAUSALE_TRASPORTO"_s, u"CAUSALE_TRASPORTO"_s)},
        box));
    transportReason_->setRequired();
    transportReason_->widget()->setToolTip(core::tr("Perché la merce viaggia: vendita, conto lavorazione, reso."));
    auto *packages = declare(packagesField(box));
    auto *weight = declare(weightField(box));
    weightUnit_ = declare(new ui::ChoiceField({.name = u"txtPesoUM"_s,
                                               .buttonName = u"cmdSelezionaPesoUM"_s,
                                               .label = u"Unità di misura"_s,
                                               .keyColumn = u"PESO_IDUM"_s,
                                               .textColumn = u"PESO_UM"_s,
                                               .choose = [this]() -> std::optional<ui::Choice> {
                                                   selezionaPesoUM();
                                                   return {};
                                               },
                                               .clearable = true,
                                               .source = textSource(u"UM"_s, u"IDUM"_s, u"UM"_s)},
                                              box));
    followUp(weightUnit_->input());
    start_ = declare(new ui::MomentField({.checkName = u"chkInizioTrasporto"_s,
                                          .dateName = u"txtDataInizioTrasporto"_s,
                                          .timeName = u"txtOraInizioTrasporto"_s,
                                          .caption = u"Data e ora di inizio trasporto"_s,
                                          .dateColumn = u"DATA_INIZIO_TRASPORTO"_s,
                                          .timeColumn = u"ORA_INIZIO_TRASPORTO"_s},
                                         box));
    auto *grid = new QGridLayout(box);
    place(grid, transportType_, 0, 0, 2);
    place(grid, appearance, 1, 0, 2);
    place(grid, transportReason_, 2, 0, 2);
    place(grid, packages, 3, 0);
    place(grid, weight, 4, 0);
    place(grid, weightUnit_, 4, 1);
    place(grid, start_, 5, 0, 2);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return box;
}

void TMMGInserimentoScarico::SetPesoUM(int id, const QString &testo)
{
    weightUnit_->setChoice({id, testo});
}

void TMMGInserimentoScarico::selezionaPesoUM()
{
    if (const auto chosen = chooseRecord(u"actModSelezionaUM"_s)) {
        SetPesoUM(chosen->key, chosen->text);
        DataChanged();
    }
}

void TMMGInserimentoScarico::selezionaVettore()
{
    if (const auto chosen = chooseRecord(u"actModSelezionaVettore"_s))
        setCarrier(chosen->key);
}

void TMMGInserimentoScarico::setCarrier(int id)
{
    const TVettore carrier = GetVettore(id);
    if (carrier.id <= 0)
        return;
    carrier_->setValues(anagraficaValues(carrier));
    DataChanged();
}

QList<std::pair<ui::Field *, QString>> TMMGInserimentoScarico::asLastTime() const
{
    return {{transportType_, u"TIPO_TRASPORTO"_s},
            {transportReason_, u"CAUSALE_TRASPORTO"_s},
            {carrier_, u"VETT_RAGIONESOCIALE"_s}};
}

// The goods of the copy have not left yet.
void TMMGInserimentoScarico::leaveOutOfCopy()
{
    start_->clear();
}
