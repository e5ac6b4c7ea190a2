#include "magazzino/schema/Tables.h"

using namespace Qt::StringLiterals;

namespace schema {

namespace {

constexpr bool notNull = true;

constexpr Column causaliTrasporto[] = {
    {u"IDCAUSALE_TRASPORTO", u"INTEGER", notNull},
    {u"CAUSALE_TRASPORTO", u"VARCHAR(20)", notNull},
};

constexpr Column causaliMaga[] = {
    {u"IDCAUSALE_MAGA", u"INTEGER", notNull},
    {u"CAUSALE_MAGA", u"VARCHAR(50)", notNull},
};

constexpr Column tipiTrasporto[] = {
    {u"IDTIPO_TRASPORTO", u"INTEGER", notNull},
    {u"TIPO_TRASPORTO", u"VARCHAR(50)", notNull},
};

constexpr Column fornitori[] = {
    {u"IDFORNITORE", u"INTEGER", notNull},
    {u"CODICE", u"VARCHAR(20)", notNull},
    {u"RAGIONESOCIALE", u"VARCHAR(100)", notNull},
    {u"INDIRIZZO", u"VARCHAR(50)"},
    {u"CITTA", u"VARCHAR(30)"},
    {u"CAP", u"VARCHAR(5)"},
    {u"PROVINCIA", u"VARCHAR(2)"},
    {u"NAZIONE", u"VARCHAR(30)"},
    {u"CODICEFISCALE", u"VARCHAR(16)"},
    {u"PARTITAIVA", u"VARCHAR(11)"},
    {u"IDTIPO_PAGAMENTO", u"INTEGER"},
    {u"TELEFONO1", u"VARCHAR(20)"},
    {u"TELEFONO2", u"VARCHAR(20)"},
    {u"TELEFONO3", u"VARCHAR(20)"},
    {u"FAX", u"VARCHAR(20)"},
    {u"EMAIL", u"VARCHAR(100)"},
    {u"WEB", u"VARCHAR(100)"},
    {u"NOTE", u"BLOB SUB_TYPE 1"},
};

constexpr Column bolleCarico[] = {
    {u"IDBOLLA_CARICO", u"INTEGER", notNull},
    {u"NUMERO", u"INTEGER", notNull},
    {u"DATA", u"DATE", notNull},
    {u"ANNO", u"INTEGER", notNull},
    {u"FOR_CODICE", u"VARCHAR(20)", notNull},
    {u"FOR_RAGIONESOCIALE", u"VARCHAR(100)", notNull},
    {u"FOR_INDIRIZZO", u"VARCHAR(50)"},
    {u"FOR_CITTA", u"VARCHAR(30)"},
    {u"FOR_CAP", u"VARCHAR(5)"},
    {u"FOR_PROVINCIA", u"VARCHAR(2)"},
    {u"FOR_NAZIONE", u"VARCHAR(30)"},
    {u"FOR_CODICEFISCALE", u"VARCHAR(16)"},
    {u"FOR_PARTITAIVA", u"VARCHAR(11)"},
    {u"IDTIPO_TRASPORTO", u"INTEGER", notNull},
    {u"TIPO_TRASPORTO", u"VARCHAR(50)", notNull},
    {u"ASPETTO_BENI", u"VARCHAR(20)"},
    {u"IDCAUSALE_TRASPORTO", u"INTEGER", notNull},
    {u"CAUSALE_TRASPORTO", u"VARCHAR(20)", notNull},
    {u"COLLI", u"INTEGER"},
    {u"PESO", u"DECIMAL(13,3)"},
    {u"PESO_IDUM", u"INTEGER"},
    {u"PESO_UM", u"VARCHAR(5)"},
    {u"TOTALE_IMPONIBILE", u"DECIMAL(13,2)", notNull},
    {u"TOTALE_IMPOSTA", u"DECIMAL(13, 2)", notNull},
    {u"TOTALE_DOCUMENTO", u"DECIMAL(13, 2)", notNull},
    {u"NOTE", u"BLOB SUB_TYPE 1"},
};

constexpr Column bolleCaricoDett[] = {
    {u"IDBOLLA_CARICO_DETT", u"INTEGER", notNull},
    {u"IDBOLLA_CARICO", u"INTEGER", notNull},
    {u"CODICE", u"VARCHAR(20)"},
    {u"DESCRIZIONE", u"BLOB SUB_TYPE 1"},
    {u"IDCATEGORIA", u"INTEGER"},
    {u"CATEGORIA", u"VARCHAR(50)"},
    {u"COSTO", u"DECIMAL(13, 2)"},
    {u"PREZZO", u"DECIMAL(13, 2)"},
    {u"QUANTITA", u"DECIMAL(13, 2)"},
    {u"IMPORTO", u"DECIMAL(13, 2)"},
    {u"IVA_IDALIQUOTA_IVA", u"INTEGER"},
    {u"IVA_CODICE", u"VARCHAR(2)"},
    {u"IVA_DESCRIZIONE", u"VARCHAR(30)"},
    {u"IVA_ALIQUOTA", u"DECIMAL(13, 2)"},
    {u"IDUM", u"INTEGER"},
    {u"UM", u"VARCHAR(5)"},
    {u"TIPO_RIGA", u"VARCHAR(50)", notNull},
};

constexpr Column ddtScarico[] = {
    {u"IDDDT_SCARICO", u"INTEGER", notNull},
    {u"NUMERO", u"INTEGER", notNull},
    {u"DATA", u"DATE", notNull},
    {u"ANNO", u"INTEGER", notNull},
    {u"CLI_CODICE", u"VARCHAR(20)", notNull},
    {u"CLI_RAGIONESOCIALE", u"VARCHAR(100)", notNull},
    {u"CLI_INDIRIZZO", u"VARCHAR(50)"},
    {u"CLI_CITTA", u"VARCHAR(30)"},
    {u"CLI_CAP", u"VARCHAR(5)"},
    {u"CLI_PROVINCIA", u"VARCHAR(2)"},
    {u"CLI_NAZIONE", u"VARCHAR(30)"},
    {u"CLI_CODICEFISCALE", u"VARCHAR(16)"},
    {u"CLI_PARTITAIVA", u"VARCHAR(11)"},
    {u"DEST_RAGIONESOCIALE", u"VARCHAR(100)"},
    {u"DEST_INDIRIZZO", u"VARCHAR(50)"},
    {u"DEST_CITTA", u"VARCHAR(30)"},
    {u"DEST_CAP", u"VARCHAR(5)"},
    {u"DEST_PROVINCIA", u"VARCHAR(2)"},
    {u"DEST_NAZIONE", u"VARCHAR(30)"},
    {u"VETT_CODICE", u"VARCHAR(20)"},
    {u"VETT_RAGIONESOCIALE", u"VARCHAR(100)"},
    {u"VETT_INDIRIZZO", u"VARCHAR(50)"},
    {u"VETT_CITTA", u"VARCHAR(30)"},
    {u"VETT_CAP", u"VARCHAR(5)"},
    {u"VETT_PROVINCIA", u"VARCHAR(2)"},
    {u"VETT_NAZIONE", u"VARCHAR(30)"},
    {u"IDTIPO_TRASPORTO", u"INTEGER", notNull},
    {u"TIPO_TRASPORTO", u"VARCHAR(50)", notNull},
    {u"ASPETTO_BENI", u"VARCHAR(20)"},
    {u"IDCAUSALE_TRASPORTO", u"INTEGER", notNull},
    {u"CAUSALE_TRASPORTO", u"VARCHAR(20)", notNull},
    {u"COLLI", u"INTEGER"},
    {u"PESO", u"DECIMAL(13,3)"},
    {u"PESO_IDUM", u"INTEGER"},
    {u"PESO_UM", u"VARCHAR(5)"},
    {u"DATA_INIZIO_TRASPORTO", u"DATE"},
    {u"ORA_INIZIO_TRASPORTO", u"TIME"},
    {u"TOTALE_IMPONIBILE", u"DECIMAL(13,2)", notNull},
    {u"TOTALE_IMPOSTA", u"DECIMAL(13, 2)", notNull},
    {u"TOTALE_DOCUMENTO", u"DECIMAL(13, 2)", notNull},
    {u"NOTE", u"BLOB SUB_TYPE 1"},
};

constexpr Column ddtScaricoDett[] = {
    {u"IDDDT_SCARICO_DETT", u"INTEGER", notNull},
    {u"IDDDT_SCARICO", u"INTEGER", notNull},
    {u"CODICE", u"VARCHAR(20)"},
    {u"DESCRIZIONE", u"BLOB SUB_TYPE 1"},
    {u"IDCATEGORIA", u"INTEGER"},
    {u"CATEGORIA", u"VARCHAR(50)"},
    {u"COSTO", u"DECIMAL(13, 2)"},
    {u"PREZZO", u"DECIMAL(13, 2)"},
    {u"QUANTITA", u"DECIMAL(13, 2)"},
    {u"IMPORTO", u"DECIMAL(13, 2)"},
    {u"IVA_IDALIQUOTA_IVA", u"INTEGER"},
    {u"IVA_CODICE", u"VARCHAR(2)"},
    {u"IVA_DESCRIZIONE", u"VARCHAR(30)"},
    {u"IVA_ALIQUOTA", u"DECIMAL(13, 2)"},
    {u"IDUM", u"INTEGER"},
    {u"UM", u"VARCHAR(5)"},
    {u"TIPO_RIGA", u"VARCHAR(50)", notNull},
};

constexpr Column fattAcc[] = {
    {u"IDFATT_ACC", u"INTEGER", notNull},
    {u"NUMERO", u"INTEGER", notNull},
    {u"DATA", u"DATE", notNull},
    {u"ANNO", u"INTEGER", notNull},
    {u"CLI_CODICE", u"VARCHAR(20)", notNull},
    {u"CLI_RAGIONESOCIALE", u"VARCHAR(100)", notNull},
    {u"CLI_INDIRIZZO", u"VARCHAR(50)"},
    {u"CLI_CITTA", u"VARCHAR(30)"},
    {u"CLI_CAP", u"VARCHAR(5)"},
    {u"CLI_PROVINCIA", u"VARCHAR(2)"},
    {u"CLI_NAZIONE", u"VARCHAR(30)"},
    {u"CLI_CODICEFISCALE", u"VARCHAR(16)"},
    {u"CLI_PARTITAIVA", u"VARCHAR(11)"},
    {u"DEST_RAGIONESOCIALE", u"VARCHAR(100)"},
    {u"DEST_INDIRIZZO", u"VARCHAR(50)"},
    {u"DEST_CITTA", u"VARCHAR(30)"},
    {u"DEST_CAP", u"VARCHAR(5)"},
    {u"DEST_PROVINCIA", u"VARCHAR(2)"},
    {u"DEST_NAZIONE", u"VARCHAR(30)"},
    {u"VETT_CODICE", u"VARCHAR(20)"},
    {u"VETT_RAGIONESOCIALE", u"VARCHAR(100)"},
    {u"VETT_INDIRIZZO", u"VARCHAR(50)"},
    {u"VETT_CITTA", u"VARCHAR(30)"},
    {u"VETT_CAP", u"VARCHAR(5)"},
    {u"VETT_PROVINCIA", u"VARCHAR(2)"},
    {u"VETT_NAZIONE", u"VARCHAR(30)"},
    {u"IDTIPO_PAGAMENTO", u"INTEGER", notNull},
    {u"TIPO_PAGAMENTO", u"VARCHAR(30)", notNull},
    {u"SCADENZA_PAGAMENTO", u"DATE"},
    {u"PAGATO", u"VARCHAR(5)", notNull},
    {u"IDTIPO_TRASPORTO", u"INTEGER", notNull},
    {u"TIPO_TRASPORTO", u"VARCHAR(50)", notNull},
    {u"ASPETTO_BENI", u"VARCHAR(20)"},
    {u"IDCAUSALE_TRASPORTO", u"INTEGER", notNull},
    {u"CAUSALE_TRASPORTO", u"VARCHAR(20)", notNull},
    {u"COLLI", u"INTEGER"},
    {u"PESO", u"DECIMAL(13,3)"},
    {u"PESO_IDUM", u"INTEGER"},
    {u"PESO_UM", u"VARCHAR(5)"},
    {u"DATA_INIZIO_TRASPORTO", u"DATE"},
    {u"ORA_INIZIO_TRASPORTO", u"TIME"},
    {u"TOTALE_IMPONIBILE", u"DECIMAL(13,2)", notNull},
    {u"TOTALE_IMPOSTA", u"DECIMAL(13, 2)", notNull},
    {u"TOTALE_DOCUMENTO", u"DECIMAL(13, 2)", notNull},
    {u"FC_ABILITATO", u"VARCHAR(5)", notNull},
    {u"FC_GENERA_OGNI", u"INTEGER"},
    {u"FC_GENERA_OGNI_UM", u"VARCHAR(255)"},
    {u"FC_DATA_INIZIO", u"DATE"},
    {u"FC_DATA_FINE", u"DATE"},
    {u"FC_DATA_NUOVA_FATTURA", u"VARCHAR(255)"},
    {u"NOTE", u"BLOB SUB_TYPE 1"},
};

constexpr Column fattAccDett[] = {
    {u"IDFATT_ACC_DETT", u"INTEGER", notNull},
    {u"IDFATT_ACC", u"INTEGER", notNull},
    {u"CODICE", u"VARCHAR(20)"},
    {u"DESCRIZIONE", u"BLOB SUB_TYPE 1"},
    {u"IDCATEGORIA", u"INTEGER"},
    {u"CATEGORIA", u"VARCHAR(50)"},
    {u"COSTO", u"DECIMAL(13, 2)"},
    {u"PREZZO", u"DECIMAL(13, 2)"},
    {u"SCONTO", u"DECIMAL(13, 2)"},
    {u"QUANTITA", u"DECIMAL(13, 2)"},
    {u"IMPORTO", u"DECIMAL(13, 2)"},
    {u"IVA_IDALIQUOTA_IVA", u"INTEGER"},
    {u"IVA_CODICE", u"VARCHAR(2)"},
    {u"IVA_DESCRIZIONE", u"VARCHAR(30)"},
    {u"IVA_ALIQUOTA", u"DECIMAL(13, 2)"},
    {u"IDUM", u"INTEGER"},
    {u"UM", u"VARCHAR(5)"},
    {u"TIPO_RIGA", u"VARCHAR(50)", notNull},
};

constexpr Column magazzini[] = {
    {u"IDMAGAZZINO", u"INTEGER", notNull},
    {u"NUMERO", u"INTEGER", notNull},
    {u"MAGAZZINO", u"VARCHAR(20)", notNull},
    {u"DESCRIZIONE", u"VARCHAR(200)"},
};

constexpr Column moviMaga[] = {
    {u"IDMOVI_MAGA", u"INTEGER", notNull},
    {u"IDMAGAZZINO", u"INTEGER", notNull},
    {u"DATA_MOVIMENTO", u"DATE", notNull},
    {u"CODICE", u"VARCHAR(20)", notNull},
    {u"DESCRIZIONE", u"VARCHAR(100)", notNull},
    {u"IDCATEGORIA_ANA_MAGA", u"INTEGER", notNull},
    {u"TIPO_MOVIMENTO", u"VARCHAR(50)", notNull},
    {u"PREZZO", u"DECIMAL(13, 2)", notNull},
    {u"COSTO", u"DECIMAL(13, 2)", notNull},
    {u"QUANTITA", u"DECIMAL(13, 2)", notNull},
    {u"VALORE", u"DECIMAL(13, 2)", notNull},
    {u"VALORE_IMPORTO", u"DECIMAL(13, 2)", notNull},
    {u"IDCAUSALE_MAGA", u"INTEGER", notNull},
    {u"RIF_DOC_TIPO", u"VARCHAR(50)"},
    {u"RIF_DOC_ID", u"INTEGER"},
    {u"RIF_DOC_IDRIGA", u"INTEGER"},
    {u"NOTE", u"BLOB SUB_TYPE 1"},
};

constexpr Column vettori[] = {
    {u"IDVETTORE", u"INTEGER", notNull},
    {u"CODICE", u"VARCHAR(20)", notNull},
    {u"RAGIONESOCIALE", u"VARCHAR(100)", notNull},
    {u"INDIRIZZO", u"VARCHAR(50)"},
    {u"CITTA", u"VARCHAR(30)"},
    {u"CAP", u"VARCHAR(5)"},
    {u"PROVINCIA", u"VARCHAR(2)"},
    {u"NAZIONE", u"VARCHAR(30)"},
    {u"CODICEFISCALE", u"VARCHAR(16)"},
    {u"PARTITAIVA", u"VARCHAR(11)"},
    {u"TELEFONO1", u"VARCHAR(20)"},
    {u"TELEFONO2", u"VARCHAR(20)"},
    {u"TELEFONO3", u"VARCHAR(20)"},
    {u"FAX", u"VARCHAR(20)"},
    {u"EMAIL", u"VARCHAR(100)"},
    {u"WEB", u"VARCHAR(100)"},
    {u"NOTE", u"BLOB SUB_TYPE 1"},
};

} // namespace

const QList<Table> &tables()
{
    static const QList<Table> all = {
        {u"CAUSALI_TRASPORTO",
         causaliTrasporto,
         {u"CONSTRAINT PK_CAUSALI_TRASPORTO PRIMARY KEY(IDCAUSALE_TRASPORTO)"_s,
          u"CONSTRAINT UK1_CAUSALI_TRASPORTO UNIQUE(CAUSALE_TRASPORTO)"_s}},
        {u"CAUSALI_MAGA",
         causaliMaga,
         {u"CONSTRAINT PK_CAUSALI_MAGA PRIMARY KEY(IDCAUSALE_MAGA)"_s,
          u"CONSTRAINT UK1_CAUSALI_MAGA UNIQUE(CAUSALE_MAGA)"_s}},
        {u"TIPI_TRASPORTO",
         tipiTrasporto,
         {u"CONSTRAINT PK_TIPI_TRASPORTO PRIMARY KEY(IDTIPO_TRASPORTO)"_s,
          u"CONSTRAINT UK1_TIPI_TRASPORTO UNIQUE(TIPO_TRASPORTO)"_s}},
        {u"FORNITORI",
         fornitori,
         {u"CONSTRAINT PK_FORNITORI PRIMARY KEY(IDFORNITORE)"_s, u"CONSTRAINT UK1_FORNITORI UNIQUE(CODICE)"_s}},
        {u"BOLLE_CARICO",
         bolleCarico,
         {u"CONSTRAINT PK_BOLLE_CARICO PRIMARY KEY(IDBOLLA_CARICO)"_s,
          u"CONSTRAINT UK1_BOLLE_CARICO UNIQUE(NUMERO, ANNO)"_s}},
        {u"BOLLE_CARICO_DETT",
         bolleCaricoDett,
         {u"CONSTRAINT PK_BOLLE_CARICO_DETT PRIMARY KEY(IDBOLLA_CARICO_DETT)"_s}},
        {u"DDT_SCARICO",
         ddtScarico,
         {u"CONSTRAINT PK_DDT_SCARICO PRIMARY KEY(IDDDT_SCARICO)"_s,
          u"CONSTRAINT UK1_DDT_SCARICO UNIQUE(NUMERO, ANNO)"_s}},
        {u"DDT_SCARICO_DETT", ddtScaricoDett, {u"CONSTRAINT PK_DDT_SCARICO_DETT PRIMARY KEY(IDDDT_SCARICO_DETT)"_s}},
        {u"FATT_ACC",
         fattAcc,
         {u"CONSTRAINT PK_FATT_ACC PRIMARY KEY(IDFATT_ACC)"_s, u"CONSTRAINT UK1_FATT_ACC UNIQUE(NUMERO, ANNO)"_s}},
        {u"FATT_ACC_DETT", fattAccDett, {u"CONSTRAINT PK_FATT_ACC_DETT PRIMARY KEY(IDFATT_ACC_DETT)"_s}},
        {u"MAGAZZINI",
         magazzini,
         {u"CONSTRAINT UK1_MAGAZZINI UNIQUE(NUMERO)"_s, u"CONSTRAINT UK2_MAGAZZINI UNIQUE(MAGAZZINO)"_s,
          u"CONSTRAINT PK_MAGAZZINI PRIMARY KEY(IDMAGAZZINO)"_s}},
        {u"MOVI_MAGA", moviMaga, {u"CONSTRAINT PK_MOVI_MAGA PRIMARY KEY(IDMOVI_MAGA)"_s}},
        {u"VETTORI",
         vettori,
         {u"CONSTRAINT PK_VETTORI PRIMARY KEY(IDVETTORE)"_s, u"CONSTRAINT UK1_VETTORI UNIQUE(CODICE)"_s}},
    };
    return all;
}

QStringList definition(const Table &table)
{
    QStringList parts;
    for (const Column &column : table.columns)
        parts.append(column.name.toString() + u' ' + column.type.toString() +
                     (column.required ? u" NOT NULL"_s : QString()));
    parts += table.constraints;
    const QStringView key = table.columns.front().name;
    return {
        u"CREATE TABLE %1(%2)"_s.arg(table.name, parts.join(u", "_s)), u"CREATE GENERATOR GN_%1"_s.arg(key),
        u"CREATE TRIGGER TG_BI_%1 FOR %1 BEFORE INSERT AS BEGIN NEW.%2 = GEN_ID(GN_%2, 1); END"_s.arg(table.name, key)};
}

} // namespace schema
