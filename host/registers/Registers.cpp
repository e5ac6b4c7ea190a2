#include "host/registers/Registers.h"

#include "host/ArticleStock.h"
#include "host/Barcodes.h"
#include "host/Categories.h"
#include "host/registers/FirmGroups.h"
#include "platform/core/Translation.h"
#include "platform/ui/LooseFilter.h"
#include "platform/ui/RegisterParts.h"

using namespace Qt::StringLiterals;

// What the host's registers are. The entry form shows the fields in the order of their declaration, which is also the
// order of the Tab key.
namespace host {

using namespace ui::parts;

namespace {

using Kind = ui::RegisterField::Kind;
using Display = ui::ListColumn::Display;
using Width = ui::ListColumn::Width;

ui::RegisterField vatLookup(int row, int position)
{
    return {.name = u"txtAliquotaIVA"_s,
            .label = u"Aliquota IVA"_s,
            .column = u"IDALIQUOTA_IVA"_s,
            .kind = Kind::Lookup,
            .row = row,
            .position = position,
            .span = 2,
            .lookupSql = u"SELECT IDALIQUOTA_IVA, CODICE || ' - ' || DESCRIZIONE AS TESTO FROM ALIQUOTE_IVA ORDER BY "
                         "ALIQUOTA DESC, CODICE"_s,
            .help = core::tr("Proposta nelle righe dei documenti.")};
}

ui::RegisterField unitLookup(int row, int position)
{
    return {.name = u"txtUM"_s,
            .label = u"Unità di misura"_s,
            .column = u"IDUM"_s,
            .kind = Kind::Lookup,
            .row = row,
            .position = position,
            .lookupSql = u"SELECT IDUM, UM AS TESTO FROM UM ORDER BY UPPER(UM)"_s};
}

ui::RegisterField category(const ui::CategoryTable &table, int row)
{
    return {.name = u"txtCategoria"_s,
            .label = u"Categoria"_s,
            .column = table.key,
            .kind = Kind::Category,
            .row = row,
            .categories = table,
            .help = core::tr("Raggruppa: elenchi, scelte e inventari si possono limitare a una categoria.")};
}

/// What articles and services have in common.
ui::RegisterGroup item(const QString &title, const ui::CategoryTable &categories)
{
    return {general,
            title,
            {withHelp(text(u"txtCodice"_s, u"Codice"_s, u"CODICE"_s, 20, 0),
                      core::tr("Il nome breve con cui si digita nelle righe dei documenti; non può ripetersi.")),
             text(u"txtDescrizione"_s, u"Descrizione"_s, u"DESCRIZIONE"_s, 100, 1, 0, 2), category(categories, 2),
             unitLookup(2, 1)}};
}

ui::RegisterGroup prices(const QString &costLabel)
{
    return {general,
            core::tr("Prezzi"),
            {withHelp(number(Kind::Amount, u"txtPrezzo"_s, core::tr("Prezzo di vendita"), u"PREZZO"_s, 0),
                      core::tr("Senza IVA, proposto nelle righe di D.d.T. e fatture.")),
             withHelp(number(Kind::Amount, u"txtCosto"_s, costLabel, u"COSTO"_s, 0, 1),
                      core::tr("Senza IVA, proposto nelle righe delle bolle di carico.")),
             vatLookup(1, 0)}};
}

ui::RegisterGroup notes()
{
    return {u"Note"_s, {}, {{.name = u"txtNote"_s, .label = {}, .column = u"NOTE"_s, .kind = Kind::Memo}}};
}

ui::RegisterSpec makeCustomers()
{
    QList<ui::RegisterGroup> groups = firmGroups(FirmKind::Customer);
    groups[static_cast<int>(FirmBox::TaxData)].fields.append(
        {.name = u"txtTipoPagamento"_s,
         .label = u"Tipo di pagamento"_s,
         .column = u"IDTIPO_PAGAMENTO"_s,
         .kind = Kind::Lookup,
         .row = 1,
         .span = 3,
         .lookupSql = u"SELECT IDTIPO_PAGAMENTO, TIPO_PAGAMENTO AS TESTO FROM TIPI_PAGAMENTO ORDER BY 2"_s});
    groups.append(notes());
    return {.name = u"Clienti"_s,
            .caption = core::tr("Clienti"),
            .oneRecord = core::tr("questo cliente"),
            .table = u"CLIENTI"_s,
            .key = u"IDCLIENTE"_s,
            .groups = groups,
            .required = {{u"CODICE"_s, codeIsMissing}, {u"RAGIONESOCIALE"_s, nameIsMissing}},
            .uniqueColumn = u"CODICE"_s,
            .duplicateText = codeIsTaken,
            .codePrefix = u"CLI"_s,
            .namedByText = true,
            .openingSize = {760, 500},
            .listColumns = {{u"Codice"_s, u"CODICE"_s, 100},
                            {u"Ragione sociale"_s, u"RAGIONESOCIALE"_s, 0, Width::Rest},
                            {u"Città"_s, u"CITTA"_s, 150},
                            {u"Partita IVA"_s, u"PARTITAIVA"_s, 110},
                            {u"Telefono 1"_s, u"TELEFONO1"_s, 110}},
            .listFilters = {ui::containingLoosely(u"txtCodice"_s, u"Codice"_s, u"CODICE"_s),
                            ui::containingLoosely(u"txtRagioneSociale"_s, u"Ragione sociale"_s, u"RAGIONESOCIALE"_s),
                            ui::containingLoosely(u"txtCitta"_s, u"Città"_s, u"CITTA"_s)},
            .orderText = u" ORDER BY UPPER(RAGIONESOCIALE)"_s,
            .letterColumn = u"RAGIONESOCIALE"_s};
}

ui::RegisterSpec makeCompany()
{
    QList<ui::RegisterGroup> groups = firmGroups(FirmKind::Company);
    QList<ui::RegisterField> &invoice = groups.last().fields;
    const auto besideLiquidation =
        std::find_if(invoice.begin(), invoice.end(), [](const ui::RegisterField &field) { return field.row == 2; });
    invoice.insert(besideLiquidation, number(Kind::Amount, u"txtCapitaleSociale"_s, core::tr("Capitale sociale"),
                                             u"CAPITALESOCIALE"_s, 2));
    groups.append({u"Stampe"_s,
                   {},
                   {{.name = u"lblLogo"_s,
                     .label = core::tr("Logo"),
                     .column = u"LOGO"_s,
                     .kind = Kind::Picture,
                     .help = core::tr("PNG o SVG. Sta accanto ai dati dell'azienda nei D.d.T. e nelle fatture.")}}});
    return {.name = u"Azienda"_s,
            .caption = core::tr("Dati dell'azienda"),
            .oneRecord = core::tr("questa azienda"),
            .table = u"AZIENDA"_s,
            .key = u"IDAZIENDA"_s,
            .groups = groups,
            .required = {{u"RAGIONESOCIALE"_s, nameIsMissing}},
            .openingSize = {760, 400}};
}

} // namespace

const ui::RegisterSpec &articles()
{
    static const ui::RegisterSpec spec = {
        .name = u"Articoli"_s,
        .caption = core::tr("Articoli"),
        .oneRecord = core::tr("questo articolo"),
        .table = u"ANA_MAGA"_s,
        .key = u"IDANA_MAGA"_s,
        .groups = {item(u"Articolo"_s, articleCategories),
                   prices(core::tr("Costo di acquisto")),
                   {general,
                    core::tr("Scorte"),
                    {withHelp(number(Kind::Quantity, u"txtSottoscorta"_s, core::tr("Livello di sottoscorta"),
                                     u"SOTTOSCORTA"_s, 0),
                              core::tr("Con questa esistenza o meno l'articolo sta nella stampa dei sottoscorta.")),
                     withHelp(
                         number(Kind::Quantity, u"txtRiordino"_s, core::tr("Livello di riordino"), u"RIORDINO"_s, 0, 1),
                         core::tr("Con questa esistenza o meno l'articolo sta nell'elenco di quanto va riordinato.")),
                     {.name = u"txtGiacenza"_s,
                      .label = core::tr("Giacenza"),
                      .column = u"CODICE"_s,
                      .kind = Kind::Figure,
                      .row = 0,
                      .position = 2,
                      .figures = &articleStock()}}},
                   notes()},
        .required = {{u"CODICE"_s, codeIsMissing}, {u"DESCRIZIONE"_s, descriptionIsMissing}},
        .expected = {u"IDALIQUOTA_IVA"_s, u"IDUM"_s},
        .missingQuestion = core::tr("Non è stata indicata l'aliquota IVA o l'unità di misura:\n\rmancherà anche nelle "
                                    "righe dei documenti. Salvare comunque?"),
        .uniqueColumn = u"CODICE"_s,
        .duplicateText = codeIsTaken,
        .namedByText = true,
        .deletedWith = {u"DELETE FROM BARCODE_ARTICOLI WHERE IDANA_MAGA = ?"_s},
        .openingSize = {760, 400},
        .listSql = u"SELECT ANA_MAGA.*, CATEGORIE_ANA_MAGA.CATEGORIA, UM.UM FROM ANA_MAGA "
                   "LEFT JOIN CATEGORIE_ANA_MAGA ON CATEGORIE_ANA_MAGA.IDCATEGORIA_ANA_MAGA = "
                   "ANA_MAGA.IDCATEGORIA_ANA_MAGA LEFT JOIN UM ON UM.IDUM = ANA_MAGA.IDUM "_s,
        .listColumns = {{u"Codice"_s, u"CODICE"_s, 110},
                        {u"Descrizione"_s, u"DESCRIZIONE"_s, 0, Width::Rest},
                        {u"Categoria"_s, u"CATEGORIA"_s, 140},
                        {u"U.M."_s, u"UM"_s, 45},
                        {u"Prezzo"_s, u"PREZZO"_s, 80, Width::Pixels, Display::Currency},
                        {u"Costo"_s, u"COSTO"_s, 80, Width::Pixels, Display::Currency},
                        {.header = core::tr("Giacenza"),
                         .field = u"GIACENZA"_s,
                         .width = 80,
                         .display = Display::Quantity,
                         .redBelowZero = true,
                         .figures = &articleStock(),
                         .figuresOf = u"CODICE"_s}},
        .listFilters = {ui::containingLooselyOr(u"txtCodice"_s, u"Codice"_s, u"CODICE"_s, hasBarcode),
                        ui::containingLoosely(u"txtDescrizione"_s, u"Descrizione"_s, u"DESCRIZIONE"_s)},
        .orderText = u" ORDER BY UPPER(CODICE)"_s,
        .letterColumn = u"DESCRIZIONE"_s};
    return spec;
}

const ui::RegisterSpec &services()
{
    static const ui::RegisterSpec spec = {
        .name = u"Servizi"_s,
        .caption = core::tr("Servizi"),
        .oneRecord = core::tr("questo servizio"),
        .table = u"SERVIZI"_s,
        .key = u"IDSERVIZIO"_s,
        .groups = {item(u"Servizio"_s, serviceCategories), prices(u"Costo"_s), notes()},
        .required = {{u"CODICE"_s, codeIsMissing}, {u"DESCRIZIONE"_s, descriptionIsMissing}},
        .uniqueColumn = u"CODICE"_s,
        .duplicateText = codeIsTaken,
        .namedByText = true,
        .openingSize = {760, 340},
        .listSql = u"SELECT SERVIZI.*, CATEGORIE_SERVIZI.CATEGORIA FROM SERVIZI LEFT JOIN CATEGORIE_SERVIZI ON "
                   "CATEGORIE_SERVIZI.IDCATEGORIA_SERVIZI = SERVIZI.IDCATEGORIA_SERVIZI "_s,
        .listColumns = {{u"Codice"_s, u"CODICE"_s, 130},
                        {u"Descrizione"_s, u"DESCRIZIONE"_s, 0, Width::Rest},
                        {u"Categoria"_s, u"CATEGORIA"_s, 170},
                        {u"Prezzo"_s, u"PREZZO"_s, 90, Width::Pixels, Display::Currency}},
        .listFilters = {ui::containingLoosely(u"txtCodice"_s, u"Codice"_s, u"CODICE"_s),
                        ui::containingLoosely(u"txtDescrizione"_s, u"Descrizione"_s, u"DESCRIZIONE"_s)},
        .orderText = u" ORDER BY UPPER(CODICE)"_s,
        .letterColumn = u"DESCRIZIONE"_s};
    return spec;
}

const ui::RegisterSpec &customers()
{
    static const ui::RegisterSpec spec = makeCustomers();
    return spec;
}

const ui::RegisterSpec &company()
{
    static const ui::RegisterSpec spec = makeCompany();
    return spec;
}

} // namespace host
