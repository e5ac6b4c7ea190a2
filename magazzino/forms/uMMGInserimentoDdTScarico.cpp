#include "magazzino/forms/uMMGInserimentoDdTScarico.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/reports/MMGStampe.h"
#include "magazzino/ui/Scelta.h"
#include "platform/data/DataSet.h"
#include "platform/data/SqlText.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

// Positions of the copied texts in an addressee's labels.
constexpr int codeLabel = 0;
constexpr int taxCodeLabel = 7;
constexpr int vatNumberLabel = 8;

const QString documentKind = u"D.d.T. di scarico"_s;

DocumentSpec spec()
{
    return {
        .form = {.caption = u"Inserimento / Modifica D.d.T. di scarico"_s,
                 .menuCaption = u">Inserimento D.d.T. di scarico<"_s,
                 .key = u"IDDDT_SCARICO"_s,
                 .generator = u"GN_IDDDT_SCARICO"_s,
                 .closing = ui::ClosingQuestion::SaveFirst,
                 // After a failed save the note counts as saved, so that the next save edits; this is intended.
                 .afterFailedSave = ui::AfterFailedSave::AsAfterSave},
        .headerDataSet = u"adsDdTScarico"_s,
        .rowsDataSet = u"adsDdTScaricoDett"_s,
        .rowTable = u"DDT_SCARICO_DETT"_s,
        .rowKey = u"IDDDT_SCARICO_DETT"_s,
        .rowGenerator = u"GN_IDDDT_SCARICO_DETT"_s,
        .generalPage = u"Generale"_s,
        .rowsPage = u"Righe documento "_s,
        .notesPage = u"Note"_s,
        .gridName = u"gridRigheDocumento"_s,
        .columns = {{RowColumn::Codice, u"Codice"_s, 13, true},
                    {RowColumn::Descrizione, u"Descrizione"_s},
                    {RowColumn::Prezzo, u"Prezzo"_s, 100},
                    {RowColumn::Quantita, u"Q.tà"_s, 60},
                    {RowColumn::Importo, u"Importo"_s, 100},
                    {RowColumn::IVA, u"IVA"_s, 40},
                    {RowColumn::UM, u"U.M."_s, 50}},
        .rowCommands = {.articolo = u"Aggiungi articolo"_s,
                        .servizio = u"Aggiungi servizio"_s,
                        .testo = u"Aggiungi testo"_s,
                        .elimina = u"Elimina riga"_s,
                        .su = u"Sposta riga in alto"_s,
                        .giu = u"Sposta riga in basso"_s},
        .unitPrice = &DocumentRow::prezzo,
        .documentKind = documentKind,
        .movementKind = u"Scarico"_s,
        .quantitySign = -1,
        .movementNote = u"D.d.T. di scarico n. "_s,
        .nextNumber = GetNextNumeroDdTScarico,
        .numberExists = DdTScaricoExists,
        .deleteDocument = [](QWidget *, int id) { return DeleteDdTScarico(id, true); },
    };
}

ui::TextField *destinationField(const QString &name, const QString &label, const QString &column, int maxLength,
                                bool upperCase, QWidget *parent)
{
    return new ui::TextField(
        {.name = name, .label = label, .column = column, .maxLength = maxLength, .upperCase = upperCase}, parent);
}

} // namespace

TMMGInserimentoDdTScarico::TMMGInserimentoDdTScarico(QWidget *owner)
    : TMMGInserimentoDocumento(spec(), owner)
{
    setObjectName(u"MMGInserimentoDdTScarico"_s);
    auto *page = new QGridLayout(generalPage());
    page->addWidget(createAddressee(), 0, 0);
    page->addWidget(createDestination(), 0, 1);
    page->addWidget(createCarrier(), 1, 0);
    page->addWidget(createTransport(), 1, 1);
    page->setColumnStretch(0, 1);
    page->setColumnStretch(1, 1);
    page->setRowStretch(2, 1);

    // The same text when the addressee is a supplier; this is intended.
    refuseIf([this] { return addressee_->isEmpty(codeLabel); }, u"Non è stato selezionato un cliente!"_s);
    refuseIf([this] { return transportType_->key() <= 0; }, u"Non è stato selezionato un tipo di trasporto!"_s);
    refuseIf([this] { return transportReason_->key() <= 0; }, u"Non è stato selezionata una causale di trasporto!"_s);
    askIf([this] { return addressee_->isEmpty(taxCodeLabel) && addressee_->isEmpty(vatNumberLabel); },
          u"Non sono stati indicati nè il codice fiscale, nè la partita IVA,\n\rproseguire comunque?"_s);

    addPrintCommands(StampaDdTScarico);
    finishLayout({u"actNuovo"_s, u"actElimina"_s, u"actSalva"_s, u"actChiudi"_s, {}, u"actStampa"_s, u"actSalvaPDF"_s});
}

QGroupBox *TMMGInserimentoDdTScarico::createAddressee()
{
    addresseeBox_ = new QGroupBox(generalPage());
    addresseeBox_->setObjectName(u"grpAnagrafica"_s);
    addressee_ = declare(new ui::RecordLabels(etichetteAnagrafica(u"lbl"_s, u"CLI_"_s), addresseeBox_));
    QAction *customer = addCommand({.name = u"actSelezionaCliente"_s,
                                    .caption = u"Cliente"_s,
                                    .run =
                                        [this] {
                                            if (const auto chosen = scegli(u"actModSelezionaCliente"_s))
                                                setAddressee(TTipoAnagrafica::Cliente, GetCliente(chosen->key));
                                        },
                                    .icon = ui::Icon::Choose,
                                    .shortcut = QKeySequence(u"Ctrl+L"_s)});
    QAction *supplier = addCommand({.name = u"actSelezionaFornitore"_s,
                                    .caption = u"Fornitore"_s,
                                    .run =
                                        [this] {
                                            if (const auto chosen = scegli(u"actModSelezionaFornitore"_s))
                                                setAddressee(TTipoAnagrafica::Fornitore, GetFornitore(chosen->key));
                                        },
                                    .icon = ui::Icon::Choose,
                                    .shortcut = QKeySequence(u"Ctrl+F"_s)});
    auto *layout = new QVBoxLayout(addresseeBox_);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(commandButton(customer, u"cmdSelezionaCliente"_s, addresseeBox_));
    buttons->addWidget(commandButton(supplier, u"cmdSelezionaFornitore"_s, addresseeBox_));
    buttons->addStretch();
    layout->addLayout(buttons);
    layout->addWidget(addressee_->widget());
    return addresseeBox_;
}

QGroupBox *TMMGInserimentoDdTScarico::createDestination()
{
    auto *box = new QGroupBox(u"Destinazione"_s, generalPage());
    box->setObjectName(u"grpDestinazione"_s);
    auto *name = declare(
        destinationField(u"txtDestRagioneSociale"_s, u"Ragione sociale"_s, u"DEST_RAGIONESOCIALE"_s, 100, false, box));
    auto *address =
        declare(destinationField(u"txtDestIndirizzo"_s, u"Indirizzo"_s, u"DEST_INDIRIZZO"_s, 50, false, box));
    auto *town = declare(destinationField(u"txtDestCitta"_s, u"Città"_s, u"DEST_CITTA"_s, 30, false, box));
    auto *postcode = declare(destinationField(u"txtDestCap"_s, u"CAP"_s, u"DEST_CAP"_s, 5, true, box));
    auto *province = declare(destinationField(u"txtDestProvincia"_s, u"Prov."_s, u"DEST_PROVINCIA"_s, 2, true, box));
    auto *country = declare(destinationField(u"txtDestNazione"_s, u"Nazione"_s, u"DEST_NAZIONE"_s, 30, false, box));
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

QGroupBox *TMMGInserimentoDdTScarico::createCarrier()
{
    auto *box = new QGroupBox(u"Vettore"_s, generalPage());
    box->setObjectName(u"grpVettore"_s);
    carrier_ = declare(new ui::RecordLabels(etichetteAnagrafica(u"lblVett"_s, u"VETT_"_s, false), box));
    QAction *choose = addCommand({.name = u"actSelezionaVettore"_s,
                                  .caption = u"Seleziona vettore..."_s,
                                  .run = [this] { selezionaVettore(); },
                                  .icon = ui::Icon::Choose});
    QAction *clear = addCommand({.name = u"actAnnullaSelezioneVettore"_s,
                                 .caption = u"Annulla selezione"_s,
                                 .run =
                                     [this] {
                                         carrier_->clear();
                                         DataChanged();
                                     },
                                 .icon = ui::Icon::Clear});
    auto *layout = new QVBoxLayout(box);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(commandButton(choose, u"cmdSelezionaVettore"_s, box));
    buttons->addWidget(commandButton(clear, u"cmdAnnullaSelezioneVettore"_s, box));
    buttons->addStretch();
    layout->addLayout(buttons);
    layout->addWidget(carrier_->widget());
    return box;
}

QGroupBox *TMMGInserimentoDdTScarico::createTransport()
{
    auto *box = new QGroupBox(u"Trasporto"_s, generalPage());
    box->setObjectName(u"grpTrasporto"_s);
    transportType_ = declare(new ui::ChoiceField({.name = u"txtTipoTrasporto"_s,
                                                  .buttonName = u"cmdSelezionaTipoTrasporto"_s,
                                                  .label = u"Tipo di trasporto"_s,
                                                  .keyColumn = u"IDTIPO_TRASPORTO"_s,
                                                  .textColumn = u"TIPO_TRASPORTO"_s,
                                                  .choose = [] { return scegli(u"actModSelezionaTipoTrasporto"_s); }},
                                                 box));
    auto *appearance = declare(new ui::TextField(
        {.name = u"txtAspettoBeni"_s, .label = u"Aspetto dei beni"_s, .column = u"ASPETTO_BENI"_s, .maxLength = 20},
        box));
    transportReason_ = declare(new ui::ChoiceField(
        {.name = u"txtCausaleTrasporto"_s,
         .buttonName = u"cmdSelezionaCausaleTrasporto"_s,
         .label = u"Causale del trasporto"_s,
         .keyColumn = u"IDCAUSALE_TRASPORTO"_s,
         .textColumn = u"CAUSALE_TRASPORTO"_s,
         .choose = [] { return scegliConLettore(u"actModSelezionaCausaleTrasporto"_s, GetCausaleTrasporto); }},
        box));
    auto *packages =
        declare(new ui::IntegerField({.name = u"txtColli"_s, .label = u"Colli"_s, .column = u"COLLI"_s}, box));
    auto *weight = declare(new ui::DecimalField({.name = u"txtPeso"_s, .label = u"Peso"_s, .column = u"PESO"_s}, box));
    auto *weightUnit = declare(new ui::ChoiceField({.name = u"txtPesoUM"_s,
                                                    .buttonName = u"cmdSelezionaPesoUM"_s,
                                                    .label = u"Unità di misura"_s,
                                                    .keyColumn = u"PESO_IDUM"_s,
                                                    .textColumn = u"PESO_UM"_s,
                                                    .choose = [] { return scegli(u"actModSelezionaUM"_s); },
                                                    .clearable = true},
                                                   box));
    auto *start = declare(new ui::MomentField({.checkName = u"chkInizioTrasporto"_s,
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
    place(grid, weightUnit, 4, 1);
    place(grid, start, 5, 0, 2);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return box;
}

void TMMGInserimentoDdTScarico::SetTipoAnagrafica(TTipoAnagrafica tipo)
{
    tipoAnagrafica_ = tipo;
    addresseeBox_->setTitle(tipo == TTipoAnagrafica::Cliente ? u" Cliente "_s : u" Fornitore "_s);
}

void TMMGInserimentoDdTScarico::setAddressee(TTipoAnagrafica tipo, const TCliente &addressee)
{
    if (addressee.id <= 0)
        return;
    SetTipoAnagrafica(tipo);
    addressee_->setValues(valoriAnagrafica(addressee));
    DataChanged();
}

void TMMGInserimentoDdTScarico::selezionaVettore()
{
    const auto chosen = scegli(u"actModSelezionaVettore"_s);
    if (!chosen)
        return;
    const TVettore carrier = GetVettore(chosen->key);
    if (carrier.id <= 0)
        return;
    carrier_->setValues(valoriAnagrafica(carrier));
    DataChanged();
}

void TMMGInserimentoDdTScarico::resetDetails()
{
    TMMGInserimentoDocumento::resetDetails();
    SetTipoAnagrafica(TTipoAnagrafica::Cliente);
}

void TMMGInserimentoDdTScarico::loadDetails()
{
    TMMGInserimentoDocumento::loadDetails();
    SetTipoAnagrafica(static_cast<TTipoAnagrafica>(record().integer(u"TIPO_ANAGRAFICA"_s)));
}

void TMMGInserimentoDdTScarico::writeComputed(data::DataSet &row) const
{
    row.setValue(u"TIPO_ANAGRAFICA"_s, static_cast<int>(tipoAnagrafica_));
    TMMGInserimentoDocumento::writeComputed(row);
}

double TMMGInserimentoDdTScarico::movementValue(const DocumentRow &row) const
{
    return GetValoreScaricoCostoMedio(row.codice, data());
}

// The rows of a delivery note store no cost; each article row's own movement does.
QHash<int, double> TMMGInserimentoDdTScarico::storedCosts() const
{
    const data::Rows movements =
        connection().select(u"SELECT RIF_DOC_IDRIGA, COSTO FROM MOVI_MAGA WHERE RIF_DOC_TIPO="_s +
                            data::quoted(documentKind) + u" AND RIF_DOC_ID="_s + QString::number(IdRecord()));
    QHash<int, double> costs;
    for (qsizetype i = 0; i < movements.size(); ++i)
        costs.insert(movements.integer(i, u"RIF_DOC_IDRIGA"), movements.number(i, u"COSTO"));
    return costs;
}
