#include "host/registers/RegisterParts.h"

#include "host/TaxCodes.h"

using namespace Qt::StringLiterals;

// What the host's registers are. The entry form shows the fields in the order of their declaration, which is also the
// order of the Tab key.
namespace host {

using namespace parts;

namespace {

using Kind = RegisterField::Kind;
using Display = ui::ListColumn::Display;
using Width = ui::ListColumn::Width;

RegisterField vatLookup(int row, int position)
{
    return {.name = u"txtAliquotaIVA"_s,
            .label = u"Aliquota IVA"_s,
            .column = u"IDALIQUOTA_IVA"_s,
            .kind = Kind::Lookup,
            .row = row,
            .position = position,
            .span = 2,
            .lookupSql = u"SELECT IDALIQUOTA_IVA, CODICE || ' - ' || DESCRIZIONE AS TESTO FROM ALIQUOTE_IVA ORDER BY "
                         "ALIQUOTA DESC, CODICE"_s};
}

RegisterField unitLookup(int row, int position)
{
    return {.name = u"txtUM"_s,
            .label = u"Unità di misura"_s,
            .column = u"IDUM"_s,
            .kind = Kind::Lookup,
            .row = row,
            .position = position,
            .lookupSql = u"SELECT IDUM, UM AS TESTO FROM UM ORDER BY UPPER(UM)"_s};
}

RegisterField category(const ui::CategoryTable &table, int row)
{
    return {.name = u"txtCategoria"_s,
            .label = u"Categoria"_s,
            .column = table.key,
            .kind = Kind::Category,
            .row = row,
            .categories = table};
}

/// What articles and services have in common.
RegisterGroup item(const QString &title, const ui::CategoryTable &categories)
{
    return {general,
            title,
            {text(u"txtCodice"_s, u"Codice"_s, u"CODICE"_s, 20, 0),
             text(u"txtDescrizione"_s, u"Descrizione"_s, u"DESCRIZIONE"_s, 100, 1, 0, 2), category(categories, 2),
             unitLookup(2, 1)}};
}

RegisterGroup prices(const QString &costLabel)
{
    return {general,
            u"Prezzi"_s,
            {number(Kind::Amount, u"txtPrezzo"_s, u"Prezzo di vendita"_s, u"PREZZO"_s, 0),
             number(Kind::Amount, u"txtCosto"_s, costLabel, u"COSTO"_s, 0, 1), vatLookup(1, 0)}};
}

RegisterGroup notes()
{
    return {u"Note"_s, {}, {{.name = u"txtNote"_s, .label = {}, .column = u"NOTE"_s, .kind = Kind::Memo}}};
}

/// Address, tax data and contacts of a firm. The company itself keeps one telephone number.
RegisterGroup address(int firstRow)
{
    return {general,
            u"Anagrafica"_s,
            {text(u"txtRagioneSociale"_s, u"Ragione sociale"_s, u"RAGIONESOCIALE"_s, 100, firstRow, 0, 3),
             text(u"txtIndirizzo"_s, u"Indirizzo"_s, u"INDIRIZZO"_s, 50, firstRow + 1, 0, 3),
             text(u"txtCitta"_s, u"Città"_s, u"CITTA"_s, 30, firstRow + 2),
             upperText(u"txtCap"_s, u"CAP"_s, u"CAP"_s, 5, firstRow + 2, 1),
             upperText(u"txtProvincia"_s, u"Prov."_s, u"PROVINCIA"_s, 2, firstRow + 2, 2),
             text(u"txtNazione"_s, u"Nazione"_s, u"NAZIONE"_s, 30, firstRow + 3)}};
}

RegisterGroup taxData()
{
    RegisterField taxCode = upperText(u"txtCodiceFiscale"_s, u"Codice fiscale"_s, u"CODICEFISCALE"_s, 16, 0);
    taxCode.isRight = host::isTaxCode;
    RegisterField vatNumber = upperText(u"txtPartitaIVA"_s, u"Partita IVA"_s, u"PARTITAIVA"_s, 13, 0, 1);
    vatNumber.isRight = host::isVatNumber;
    return {general, u"Dati fiscali"_s, {taxCode, vatNumber}};
}

RegisterSpec makeArticles()
{
    return {.name = u"Articoli"_s,
            .caption = u"Articoli"_s,
            .oneRecord = u"questo articolo"_s,
            .table = u"ANA_MAGA"_s,
            .key = u"IDANA_MAGA"_s,
            .groups = {item(u"Articolo"_s, articleCategories),
                       prices(u"Costo di acquisto"_s),
                       {general,
                        u"Scorte"_s,
                        {number(Kind::Quantity, u"txtSottoscorta"_s, u"Livello di sottoscorta"_s, u"SOTTOSCORTA"_s, 0),
                         number(Kind::Quantity, u"txtRiordino"_s, u"Livello di riordino"_s, u"RIORDINO"_s, 0, 1)}},
                       notes()},
            .required = {{u"CODICE"_s, codeIsMissing}, {u"DESCRIZIONE"_s, descriptionIsMissing}},
            .expected = {u"IDALIQUOTA_IVA"_s, u"IDUM"_s},
            .missingQuestion =
                u"Non è stata indicata l'aliquota IVA o l'unità di misura:\n\rmancherà anche nelle righe "
                "dei documenti. Salvare comunque?"_s,
            .uniqueColumn = u"CODICE"_s,
            .duplicateText = codeIsTaken,
            .namedByText = true,
            .openingSize = {760, 400},
            .listSql = u"SELECT ANA_MAGA.*, CATEGORIE_ANA_MAGA.CATEGORIA, UM.UM FROM ANA_MAGA "
                       "LEFT JOIN CATEGORIE_ANA_MAGA ON CATEGORIE_ANA_MAGA.IDCATEGORIA_ANA_MAGA = "
                       "ANA_MAGA.IDCATEGORIA_ANA_MAGA LEFT JOIN UM ON UM.IDUM = ANA_MAGA.IDUM "_s,
            .listColumns = {{u"Codice"_s, u"CODICE"_s, 110},
                            {u"Descrizione"_s, u"DESCRIZIONE"_s, 0, Width::Rest},
                            {u"Categoria"_s, u"CATEGORIA"_s, 140},
                            {u"U.M."_s, u"UM"_s, 45},
                            {u"Prezzo"_s, u"PREZZO"_s, 80, Width::Pixels, Display::Currency},
                            {u"Costo"_s, u"COSTO"_s, 80, Width::Pixels, Display::Currency}},
            .listFilters = {ui::containing(u"txtCodice"_s, u"Codice"_s, u"CODICE"_s),
                            ui::containing(u"txtDescrizione"_s, u"Descrizione"_s, u"DESCRIZIONE"_s)},
            .orderText = u" ORDER BY UPPER(CODICE)"_s,
            .letterColumn = u"DESCRIZIONE"_s};
}

RegisterSpec makeServices()
{
    return {.name = u"Servizi"_s,
            .caption = u"Servizi"_s,
            .oneRecord = u"questo servizio"_s,
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
            .listFilters = {ui::containing(u"txtCodice"_s, u"Codice"_s, u"CODICE"_s),
                            ui::containing(u"txtDescrizione"_s, u"Descrizione"_s, u"DESCRIZIONE"_s)},
            .orderText = u" ORDER BY UPPER(CODICE)"_s,
            .letterColumn = u"DESCRIZIONE"_s};
}

RegisterSpec makeCustomers()
{
    RegisterGroup firm = address(1);
    firm.fields.prepend(text(u"txtCodice"_s, u"Codice"_s, u"CODICE"_s, 20, 0));
    RegisterGroup tax = taxData();
    tax.fields.append(
        {.name = u"txtTipoPagamento"_s,
         .label = u"Tipo di pagamento"_s,
         .column = u"IDTIPO_PAGAMENTO"_s,
         .kind = Kind::Lookup,
         .row = 1,
         .lookupSql = u"SELECT IDTIPO_PAGAMENTO, TIPO_PAGAMENTO AS TESTO FROM TIPI_PAGAMENTO ORDER BY 2"_s});
    return {.name = u"Clienti"_s,
            .caption = u"Clienti"_s,
            .oneRecord = u"questo cliente"_s,
            .table = u"CLIENTI"_s,
            .key = u"IDCLIENTE"_s,
            .groups = {firm,
                       tax,
                       {general,
                        u"Contatti"_s,
                        {text(u"txtTelefono1"_s, u"Telefono 1"_s, u"TELEFONO1"_s, 20, 0),
                         text(u"txtTelefono2"_s, u"Telefono 2"_s, u"TELEFONO2"_s, 20, 0, 1),
                         text(u"txtTelefono3"_s, u"Telefono 3"_s, u"TELEFONO3"_s, 20, 1),
                         text(u"txtFax"_s, u"Fax"_s, u"FAX"_s, 20, 1, 1),
                         text(u"txtEmail"_s, u"e-mail"_s, u"EMAIL"_s, 100, 2),
                         text(u"txtWeb"_s, u"web"_s, u"WEB"_s, 100, 2, 1)}},
                       notes()},
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
            .listFilters = {ui::containing(u"txtCodice"_s, u"Codice"_s, u"CODICE"_s),
                            ui::containing(u"txtRagioneSociale"_s, u"Ragione sociale"_s, u"RAGIONESOCIALE"_s),
                            ui::containing(u"txtCitta"_s, u"Città"_s, u"CITTA"_s)},
            .orderText = u" ORDER BY UPPER(RAGIONESOCIALE)"_s,
            .letterColumn = u"RAGIONESOCIALE"_s};
}

RegisterSpec makeCompany()
{
    return {.name = u"Azienda"_s,
            .caption = u"Dati dell'azienda"_s,
            .oneRecord = u"questa azienda"_s,
            .table = u"AZIENDA"_s,
            .key = u"IDAZIENDA"_s,
            .groups = {address(0),
                       taxData(),
                       {general,
                        u"Contatti"_s,
                        {text(u"txtTelefono"_s, u"Telefono"_s, u"TELEFONO"_s, 20, 0),
                         text(u"txtFax"_s, u"Fax"_s, u"FAX"_s, 20, 0, 1),
                         text(u"txtEmail"_s, u"e-mail"_s, u"EMAIL"_s, 100, 1),
                         text(u"txtWeb"_s, u"web"_s, u"WEB"_s, 100, 1, 1)}}},
            .required = {{u"RAGIONESOCIALE"_s, nameIsMissing}},
            .openingSize = {760, 400}};
}

} // namespace

const RegisterSpec &articles()
{
    return kept<makeArticles>();
}

const RegisterSpec &services()
{
    return kept<makeServices>();
}

const RegisterSpec &customers()
{
    return kept<makeCustomers>();
}

const RegisterSpec &company()
{
    return kept<makeCompany>();
}

} // namespace host
