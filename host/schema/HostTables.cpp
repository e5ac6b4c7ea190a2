#include "host/schema/HostTables.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

// Customers have the columns that suppliers have in the warehouse's own table, so records can be copied either way.
const QStringList customerColumns = {u"CODICE VARCHAR(20) NOT NULL"_s,
                                     u"RAGIONESOCIALE VARCHAR(100) NOT NULL"_s,
                                     u"INDIRIZZO VARCHAR(50)"_s,
                                     u"CITTA VARCHAR(30)"_s,
                                     u"CAP VARCHAR(5)"_s,
                                     u"PROVINCIA VARCHAR(2)"_s,
                                     u"NAZIONE VARCHAR(30)"_s,
                                     u"CODICEFISCALE VARCHAR(16)"_s,
                                     u"PARTITAIVA VARCHAR(13)"_s,
                                     u"IDTIPO_PAGAMENTO INTEGER"_s,
                                     u"TELEFONO1 VARCHAR(20)"_s,
                                     u"TELEFONO2 VARCHAR(20)"_s,
                                     u"TELEFONO3 VARCHAR(20)"_s,
                                     u"FAX VARCHAR(20)"_s,
                                     u"EMAIL VARCHAR(100)"_s,
                                     u"WEB VARCHAR(100)"_s,
                                     u"NOTE BLOB SUB_TYPE 1"_s,
                                     u"CONSTRAINT UK1_CLIENTI UNIQUE(CODICE)"_s};

QString createTable(const Table &table)
{
    QStringList columns = table.columns;
    if (!table.key.isEmpty()) {
        columns.prepend(table.key + u" INTEGER NOT NULL"_s);
        columns.append(u"CONSTRAINT PK_%1 PRIMARY KEY(%2)"_s.arg(table.name, table.key));
    }
    return u"CREATE TABLE %1(%2)"_s.arg(table.name, columns.join(u", "_s));
}

QString createIndex(const Table &table, int number)
{
    QString what = table.indexes[number];
    const bool unique = what.startsWith(u"UNIQUE ");
    if (unique)
        what.remove(0, 7);
    return u"CREATE %1INDEX IX%2_%3 ON %3 %4"_s.arg(unique ? u"UNIQUE "_s : QString(), QString::number(number + 1),
                                                    table.name, what);
}

} // namespace

const Table &versionTable()
{
    static const Table table = {u"TABLE_VERSION"_s,
                                {},
                                {u"TABELLA VARCHAR(31) NOT NULL"_s, u"VERSIONE VARCHAR(20) NOT NULL"_s,
                                 u"CONSTRAINT PK_TABLE_VERSION PRIMARY KEY(TABELLA)"_s},
                                {}};
    return table;
}

// Codes are stored as typed but compared without case everywhere, so they are unique without case as well.
// NOLINTNEXTLINE(readability-function-size): data alone
const QList<Table> &baseTables()
{
    static const QList<Table> all = {
        {u"OPZIONI"_s,
         {},
         {u"OPZIONE VARCHAR(50) NOT NULL"_s, u"VALORE VARCHAR(255)"_s, u"CONSTRAINT PK_OPZIONI PRIMARY KEY(OPZIONE)"_s},
         {}},
        {u"AZIENDA"_s,
         u"IDAZIENDA"_s,
         {u"RAGIONESOCIALE VARCHAR(100) NOT NULL"_s, u"INDIRIZZO VARCHAR(50)"_s, u"CITTA VARCHAR(30)"_s,
          u"CAP VARCHAR(5)"_s, u"PROVINCIA VARCHAR(2)"_s, u"NAZIONE VARCHAR(30)"_s, u"PARTITAIVA VARCHAR(13)"_s,
          u"CODICEFISCALE VARCHAR(16)"_s, u"TELEFONO VARCHAR(20)"_s, u"FAX VARCHAR(20)"_s, u"EMAIL VARCHAR(100)"_s,
          u"WEB VARCHAR(100)"_s},
         {}},
        {u"UM"_s, u"IDUM"_s, {u"UM VARCHAR(5) NOT NULL"_s, u"CONSTRAINT UK1_UM UNIQUE(UM)"_s}, {}},
        {u"ALIQUOTE_IVA"_s,
         u"IDALIQUOTA_IVA"_s,
         {u"CODICE VARCHAR(2) NOT NULL"_s, u"DESCRIZIONE VARCHAR(30) NOT NULL"_s, u"ALIQUOTA DECIMAL(13, 2) NOT NULL"_s,
          u"CONSTRAINT UK1_ALIQUOTE_IVA UNIQUE(CODICE)"_s},
         {}},
        {u"TIPI_PAGAMENTO"_s,
         u"IDTIPO_PAGAMENTO"_s,
         {u"TIPO_PAGAMENTO VARCHAR(30) NOT NULL"_s, u"CONSTRAINT UK1_TIPI_PAGAMENTO UNIQUE(TIPO_PAGAMENTO)"_s},
         {}},
        {u"NOTE_DOCUMENTI"_s,
         u"IDNOTA_DOCUMENTI"_s,
         {u"TITOLO VARCHAR(100) NOT NULL"_s, u"TESTO BLOB SUB_TYPE 1"_s},
         {}},
        {u"CATEGORIE_ANA_MAGA"_s,
         u"IDCATEGORIA_ANA_MAGA"_s,
         {u"IDPADRE INTEGER"_s, u"CATEGORIA VARCHAR(50) NOT NULL"_s},
         {u"(IDPADRE)"_s}},
        // The description is required because every stock movement of the article repeats it.
        {u"ANA_MAGA"_s,
         u"IDANA_MAGA"_s,
         {u"CODICE VARCHAR(20) NOT NULL"_s, u"DESCRIZIONE VARCHAR(100) NOT NULL"_s, u"IDCATEGORIA_ANA_MAGA INTEGER"_s,
          u"PREZZO DECIMAL(13, 2) DEFAULT 0"_s, u"COSTO DECIMAL(13, 2) DEFAULT 0"_s,
          u"SOTTOSCORTA DECIMAL(13, 2) DEFAULT 0"_s, u"RIORDINO DECIMAL(13, 2) DEFAULT 0"_s,
          u"IDALIQUOTA_IVA INTEGER"_s, u"IDUM INTEGER"_s, u"NOTE BLOB SUB_TYPE 1"_s,
          u"CONSTRAINT UK1_ANA_MAGA UNIQUE(CODICE)"_s},
         {u"UNIQUE COMPUTED BY (UPPER(CODICE))"_s, u"(IDCATEGORIA_ANA_MAGA)"_s}},
        {u"CATEGORIE_SERVIZI"_s,
         u"IDCATEGORIA_SERVIZI"_s,
         {u"IDPADRE INTEGER"_s, u"CATEGORIA VARCHAR(50) NOT NULL"_s},
         {u"(IDPADRE)"_s}},
        {u"SERVIZI"_s,
         u"IDSERVIZIO"_s,
         {u"CODICE VARCHAR(20) NOT NULL"_s, u"DESCRIZIONE VARCHAR(100) NOT NULL"_s, u"IDCATEGORIA_SERVIZI INTEGER"_s,
          u"PREZZO DECIMAL(13, 2) DEFAULT 0"_s, u"COSTO DECIMAL(13, 2) DEFAULT 0"_s, u"IDALIQUOTA_IVA INTEGER"_s,
          u"IDUM INTEGER"_s, u"NOTE BLOB SUB_TYPE 1"_s, u"CONSTRAINT UK1_SERVIZI UNIQUE(CODICE)"_s},
         {u"UNIQUE COMPUTED BY (UPPER(CODICE))"_s, u"(IDCATEGORIA_SERVIZI)"_s}},
        {u"CLIENTI"_s,
         u"IDCLIENTE"_s,
         customerColumns,
         {u"UNIQUE COMPUTED BY (UPPER(CODICE))"_s, u"COMPUTED BY (UPPER(RAGIONESOCIALE))"_s}},
        {u"FATT_VEND"_s,
         u"IDFATT_VEND"_s,
         {u"NUMERO INTEGER NOT NULL"_s, u"ANNO INTEGER NOT NULL"_s, u"DATA DATE NOT NULL"_s, u"IDCLIENTE INTEGER"_s,
          u"CLI_CODICE VARCHAR(20)"_s, u"CLI_RAGIONESOCIALE VARCHAR(100)"_s, u"CLI_INDIRIZZO VARCHAR(50)"_s,
          u"CLI_CITTA VARCHAR(30)"_s, u"CLI_CAP VARCHAR(5)"_s, u"CLI_PROVINCIA VARCHAR(2)"_s,
          u"CLI_NAZIONE VARCHAR(30)"_s, u"CLI_CODICEFISCALE VARCHAR(16)"_s, u"CLI_PARTITAIVA VARCHAR(13)"_s,
          u"TOTALE DECIMAL(13, 2) DEFAULT 0"_s, u"CONSTRAINT UK1_FATT_VEND UNIQUE(NUMERO, ANNO)"_s},
         {u"(ANNO)"_s}},
        {u"UTENTI"_s,
         u"IDUTENTE"_s,
         {u"USER_NAME VARCHAR(50) NOT NULL"_s, u"NOME VARCHAR(100)"_s, u"PASSWORD_HASH VARCHAR(255)"_s,
          u"ATTIVO VARCHAR(5) DEFAULT 'True' NOT NULL"_s, u"CONSTRAINT UK1_UTENTI UNIQUE(USER_NAME)"_s},
         {u"UNIQUE COMPUTED BY (UPPER(USER_NAME))"_s}},
        {u"RUOLI_UTENTE"_s,
         u"IDRUOLO_UTENTE"_s,
         {u"RUOLO VARCHAR(50) NOT NULL"_s, u"CONSTRAINT UK1_RUOLI_UTENTE UNIQUE(RUOLO)"_s},
         {}},
        // Modules insert their rights by position: exactly these columns in this order, the key given as 0.
        {u"ABILITAZIONI_UTENTE"_s,
         u"IDABILITAZIONE_UTENTE"_s,
         {u"ABILITAZIONE_UTENTE VARCHAR(100) NOT NULL"_s, u"MODULO VARCHAR(50)"_s},
         {u"(ABILITAZIONE_UTENTE)"_s}},
        {u"ABILITAZIONI_RUOLI"_s,
         {},
         {u"IDRUOLO_UTENTE INTEGER NOT NULL"_s, u"IDABILITAZIONE_UTENTE INTEGER NOT NULL"_s,
          u"CONSTRAINT PK_ABILITAZIONI_RUOLI PRIMARY KEY(IDRUOLO_UTENTE, IDABILITAZIONE_UTENTE)"_s},
         {u"(IDABILITAZIONE_UTENTE)"_s}},
        {u"UTENTI_RUOLI"_s,
         {},
         {u"USER_NAME VARCHAR(50) NOT NULL"_s, u"IDRUOLO_UTENTE INTEGER NOT NULL"_s,
          u"CONSTRAINT PK_UTENTI_RUOLI PRIMARY KEY(USER_NAME, IDRUOLO_UTENTE)"_s},
         {u"COMPUTED BY (UPPER(USER_NAME))"_s, u"(IDRUOLO_UTENTE)"_s}},
    };
    return all;
}

QStringList definitions(const Table &table)
{
    QStringList statements = {createTable(table)};
    if (!table.key.isEmpty()) {
        statements.append(u"CREATE GENERATOR GN_%1"_s.arg(table.key));
        // Whatever key is given, null and 0 included, the generator decides: a predicted key can never collide.
        statements.append(u"CREATE TRIGGER TG_BI_%1 FOR %1 BEFORE INSERT AS BEGIN NEW.%2 = GEN_ID(GN_%2, 1); END"_s.arg(
            table.name, table.key));
    }
    for (int i = 0; i < table.indexes.size(); ++i)
        statements.append(createIndex(table, i));
    return statements;
}

} // namespace host
