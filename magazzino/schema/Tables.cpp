#include "magazzino/schema/Tables.h"

using namespace Qt::StringLiterals;

namespace schema {

namespace {

// Columns that several tables have; `prefix` stands before the names of what is copied into a document.

QStringList address(const QString &prefix = {})
{
    return {prefix + u"INDIRIZZO VARCHAR(50)"_s, prefix + u"CITTA VARCHAR(30)"_s, prefix + u"CAP VARCHAR(5)"_s,
            prefix + u"PROVINCIA VARCHAR(2)"_s, prefix + u"NAZIONE VARCHAR(30)"_s};
}

QStringList firm(const QString &prefix = {})
{
    return QStringList{prefix + u"CODICE VARCHAR(20) NOT NULL"_s, prefix + u"RAGIONESOCIALE VARCHAR(100) NOT NULL"_s} +
           address(prefix) + QStringList{prefix + u"CODICEFISCALE VARCHAR(16)"_s, prefix + u"PARTITAIVA VARCHAR(11)"_s};
}

QStringList contacts()
{
    return {u"TELEFONO1 VARCHAR(20)"_s, u"TELEFONO2 VARCHAR(20)"_s, u"TELEFONO3 VARCHAR(20)"_s, u"FAX VARCHAR(20)"_s,
            u"EMAIL VARCHAR(100)"_s,    u"WEB VARCHAR(100)"_s,      u"NOTE BLOB SUB_TYPE 1"_s};
}

QStringList numbering()
{
    return {u"NUMERO INTEGER NOT NULL"_s, u"DATA DATE NOT NULL"_s, u"ANNO INTEGER NOT NULL"_s};
}

QStringList destinationAndCarrier()
{
    return QStringList{u"DEST_RAGIONESOCIALE VARCHAR(100)"_s} + address(u"DEST_"_s) +
           QStringList{u"VETT_CODICE VARCHAR(20)"_s, u"VETT_RAGIONESOCIALE VARCHAR(100)"_s} + address(u"VETT_"_s);
}

QStringList transport()
{
    return {u"IDTIPO_TRASPORTO INTEGER NOT NULL"_s,
            u"TIPO_TRASPORTO VARCHAR(50) NOT NULL"_s,
            u"ASPETTO_BENI VARCHAR(20)"_s,
            u"IDCAUSALE_TRASPORTO INTEGER NOT NULL"_s,
            u"CAUSALE_TRASPORTO VARCHAR(20) NOT NULL"_s,
            u"COLLI INTEGER"_s,
            u"PESO DECIMAL(13,3)"_s,
            u"PESO_IDUM INTEGER"_s,
            u"PESO_UM VARCHAR(5)"_s};
}

QStringList transportStart()
{
    return {u"DATA_INIZIO_TRASPORTO DATE"_s, u"ORA_INIZIO_TRASPORTO TIME"_s};
}

QStringList totals()
{
    return {u"TOTALE_IMPONIBILE DECIMAL(13,2) NOT NULL"_s, u"TOTALE_IMPOSTA DECIMAL(13, 2) NOT NULL"_s,
            u"TOTALE_DOCUMENTO DECIMAL(13, 2) NOT NULL"_s};
}

QStringList payment()
{
    return {u"IDTIPO_PAGAMENTO INTEGER NOT NULL"_s, u"TIPO_PAGAMENTO VARCHAR(30) NOT NULL"_s,
            u"SCADENZA_PAGAMENTO DATE"_s, u"PAGATO VARCHAR(5) NOT NULL"_s};
}

QStringList recurrence()
{
    return {u"FC_ABILITATO VARCHAR(5) NOT NULL"_s,
            u"FC_GENERA_OGNI INTEGER"_s,
            u"FC_GENERA_OGNI_UM VARCHAR(255)"_s,
            u"FC_DATA_INIZIO DATE"_s,
            u"FC_DATA_FINE DATE"_s,
            u"FC_DATA_NUOVA_FATTURA VARCHAR(255)"_s};
}

QString note()
{
    return u"NOTE BLOB SUB_TYPE 1"_s;
}

// A table with its primary key, and with `unique` columns whose values stand in one row at the most.
Table table(const QString &name, const QString &key, QStringList columns, const QString &unique = {})
{
    columns.append(u"CONSTRAINT PK_%1 PRIMARY KEY(%2)"_s.arg(name, key));
    if (!unique.isEmpty())
        columns.append(u"CONSTRAINT UK1_%1 UNIQUE(%2)"_s.arg(name, unique));
    return {name, key, columns};
}

Table documents(const QString &name, const QString &key, const QStringList &columns)
{
    return table(name, key, columns, u"NUMERO, ANNO"_s);
}

// The rows of the documents whose key is `key`; `discount` are the columns behind the price.
Table documentRows(const QString &name, const QString &key, const QStringList &discount = {})
{
    return table(name + u"_DETT"_s, key + u"_DETT"_s,
                 QStringList{key + u" INTEGER NOT NULL"_s, u"CODICE VARCHAR(20)"_s, u"DESCRIZIONE BLOB SUB_TYPE 1"_s,
                             u"IDCATEGORIA INTEGER"_s, u"CATEGORIA VARCHAR(50)"_s, u"COSTO DECIMAL(13, 2)"_s,
                             u"PREZZO DECIMAL(13, 2)"_s} +
                     discount +
                     QStringList{u"QUANTITA DECIMAL(13, 2)"_s, u"IMPORTO DECIMAL(13, 2)"_s,
                                 u"IVA_IDALIQUOTA_IVA INTEGER"_s, u"IVA_CODICE VARCHAR(2)"_s,
                                 u"IVA_DESCRIZIONE VARCHAR(30)"_s, u"IVA_ALIQUOTA DECIMAL(13, 2)"_s, u"IDUM INTEGER"_s,
                                 u"UM VARCHAR(5)"_s, u"TIPO_RIGA VARCHAR(50) NOT NULL"_s});
}

// A register of one text.
Table texts(const QString &name, const QString &key, const QString &column, int length)
{
    return table(name, key, {u"%1 VARCHAR(%2) NOT NULL"_s.arg(column).arg(length)}, column);
}

// The one whose primary key stands behind the others.
Table warehouses()
{
    return {u"MAGAZZINI"_s,
            u"IDMAGAZZINO"_s,
            {u"NUMERO INTEGER NOT NULL"_s, u"MAGAZZINO VARCHAR(20) NOT NULL"_s, u"DESCRIZIONE VARCHAR(200)"_s,
             u"CONSTRAINT UK1_MAGAZZINI UNIQUE(NUMERO)"_s, u"CONSTRAINT UK2_MAGAZZINI UNIQUE(MAGAZZINO)"_s,
             u"CONSTRAINT PK_MAGAZZINI PRIMARY KEY(IDMAGAZZINO)"_s}};
}

Table movements()
{
    return table(u"MOVI_MAGA"_s, u"IDMOVI_MAGA"_s,
                 {u"IDMAGAZZINO INTEGER NOT NULL"_s, u"DATA_MOVIMENTO DATE NOT NULL"_s,
                  u"CODICE VARCHAR(20) NOT NULL"_s, u"DESCRIZIONE VARCHAR(100) NOT NULL"_s,
                  u"IDCATEGORIA_ANA_MAGA INTEGER NOT NULL"_s, u"TIPO_MOVIMENTO VARCHAR(50) NOT NULL"_s,
                  u"PREZZO DECIMAL(13, 2) NOT NULL"_s, u"COSTO DECIMAL(13, 2) NOT NULL"_s,
                  u"QUANTITA DECIMAL(13, 2) NOT NULL"_s, u"VALORE DECIMAL(13, 2) NOT NULL"_s,
                  u"VALORE_IMPORTO DECIMAL(13, 2) NOT NULL"_s, u"IDCAUSALE_MAGA INTEGER NOT NULL"_s,
                  u"RIF_DOC_TIPO VARCHAR(50)"_s, u"RIF_DOC_ID INTEGER"_s, u"RIF_DOC_IDRIGA INTEGER"_s, note()});
}

} // namespace

const QList<Table> &tables()
{
    static const QList<Table> all = {
        texts(u"CAUSALI_TRASPORTO"_s, u"IDCAUSALE_TRASPORTO"_s, u"CAUSALE_TRASPORTO"_s, 20),
        texts(u"CAUSALI_MAGA"_s, u"IDCAUSALE_MAGA"_s, u"CAUSALE_MAGA"_s, 50),
        texts(u"TIPI_TRASPORTO"_s, u"IDTIPO_TRASPORTO"_s, u"TIPO_TRASPORTO"_s, 50),
        table(u"FORNITORI"_s, u"IDFORNITORE"_s, firm() + QStringList{u"IDTIPO_PAGAMENTO INTEGER"_s} + contacts(),
              u"CODICE"_s),
        documents(u"BOLLE_CARICO"_s, u"IDBOLLA_CARICO"_s,
                  numbering() + firm(u"FOR_"_s) + transport() + totals() + QStringList{note()}),
        documentRows(u"BOLLE_CARICO"_s, u"IDBOLLA_CARICO"_s),
        documents(u"DDT_SCARICO"_s, u"IDDDT_SCARICO"_s,
                  numbering() + firm(u"CLI_"_s) + destinationAndCarrier() + transport() + transportStart() + totals() +
                      QStringList{note()}),
        documentRows(u"DDT_SCARICO"_s, u"IDDDT_SCARICO"_s),
        documents(u"FATT_ACC"_s, u"IDFATT_ACC"_s,
                  numbering() + firm(u"CLI_"_s) + destinationAndCarrier() + payment() + transport() + transportStart() +
                      totals() + recurrence() + QStringList{note()}),
        documentRows(u"FATT_ACC"_s, u"IDFATT_ACC"_s, {u"SCONTO DECIMAL(13, 2)"_s}),
        warehouses(),
        movements(),
        table(u"VETTORI"_s, u"IDVETTORE"_s, firm() + contacts(), u"CODICE"_s),
    };
    return all;
}

QStringList definition(const Table &table)
{
    const QString columns = (QStringList{table.key + u" INTEGER NOT NULL"_s} + table.parts).join(u", "_s);
    return {u"CREATE TABLE %1(%2)"_s.arg(table.name, columns), u"CREATE GENERATOR GN_%1"_s.arg(table.key),
            u"CREATE TRIGGER TG_BI_%1 FOR %1 BEFORE INSERT AS BEGIN NEW.%2 = GEN_ID(GN_%2, 1); END"_s.arg(table.name,
                                                                                                          table.key)};
}

} // namespace schema
