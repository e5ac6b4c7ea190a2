#include "host/schema/HostSchema.h"

#include "host/schema/HostTables.h"
#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/core/Translation.h"
#include "platform/data/Catalogue.h"
#include "platform/data/Connection.h"
#include "platform/data/DatabaseError.h"
#include "platform/schema/Engine.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

// In TABLE_VERSION. No table may ever have this name.
const QString hostObject = u"CORVANE"_s;
const QString tablesOnly = u"0.1.0"_s;
const QString baseVersion = u"1.0.0"_s; // what the first release made
const QString invoiceCodesVersion = u"1.1.0"_s;
const QString invoiceFilesVersion = u"1.2.0"_s;
const QString paymentDaysVersion = u"1.3.0"_s;
const QString printsVersion = u"1.4.0"_s;
const QString barcodesVersion = u"1.5.0"_s;

QStringList createTables()
{
    QStringList statements;
    for (const Table &table : baseTables())
        statements += definitions(table);
    return statements;
}

// What an electronic invoice asks of the registers besides.
QStringList addInvoiceColumns()
{
    return {u"ALTER TABLE AZIENDA ADD REGIMEFISCALE VARCHAR(4), ADD REAUFFICIO VARCHAR(2), ADD REANUMERO VARCHAR(20), "
            "ADD CAPITALESOCIALE DECIMAL(13, 2), ADD STATOLIQUIDAZIONE VARCHAR(2), ADD IBAN VARCHAR(34), "
            "ADD PEC VARCHAR(100)"_s,
            u"ALTER TABLE CLIENTI ADD CODICEDESTINATARIO VARCHAR(7), ADD NAZIONEISO VARCHAR(2), ADD PEC VARCHAR(100), "
            "ADD COGNOMEPERSONA VARCHAR(60), ADD NOMEPERSONA VARCHAR(60)"_s,
            u"ALTER TABLE ALIQUOTE_IVA ADD NATURA VARCHAR(4), ADD RIFERIMENTO_NORMATIVO VARCHAR(100)"_s,
            u"ALTER TABLE TIPI_PAGAMENTO ADD MODALITA VARCHAR(4), ADD CONDIZIONI VARCHAR(4)"_s};
}

// The files of electronic invoices and the exchange system's answers to them. The invoice is named by the table and the
// key that its module has for it.
QStringList createInvoiceFiles()
{
    const Table files = {u"FATTURE_ELETTRONICHE"_s,
                         u"IDFATTURA_ELETTRONICA"_s,
                         {u"NOME VARCHAR(40) NOT NULL"_s, u"DOCUMENTO VARCHAR(31) NOT NULL"_s,
                          u"IDDOCUMENTO INTEGER NOT NULL"_s, u"NUMERO_FATTURA VARCHAR(20) NOT NULL"_s,
                          u"DATA_FATTURA DATE NOT NULL"_s, u"DESTINATARIO VARCHAR(100)"_s,
                          u"IMPRONTA VARCHAR(64) NOT NULL"_s, u"SCRITTA_IL TIMESTAMP NOT NULL"_s,
                          u"UTENTE VARCHAR(50)"_s, u"STATO VARCHAR(20) NOT NULL"_s, u"STATO_DAL TIMESTAMP NOT NULL"_s,
                          u"MODIFICATA_IL TIMESTAMP"_s, u"CONTENUTO BLOB SUB_TYPE 0 NOT NULL"_s},
                         {u"UNIQUE COMPUTED BY (UPPER(NOME))"_s, u"(IDDOCUMENTO)"_s}};
    const Table receipts = {u"RICEVUTE_FATT_EL"_s,
                            u"IDRICEVUTA_FATT_EL"_s,
                            {u"IDFATTURA_ELETTRONICA INTEGER NOT NULL"_s, u"TIPO VARCHAR(2) NOT NULL"_s,
                             u"NOME VARCHAR(100)"_s, u"IMPRONTA VARCHAR(64) NOT NULL"_s,
                             u"MOMENTO TIMESTAMP NOT NULL"_s, u"LETTA_IL TIMESTAMP NOT NULL"_s, u"UTENTE VARCHAR(50)"_s,
                             u"CONTENUTO BLOB SUB_TYPE 0 NOT NULL"_s},
                            {u"UNIQUE (IMPRONTA)"_s, u"(IDFATTURA_ELETTRONICA)"_s}};
    // A generator stays where it is when a transaction is undone: no number comes twice.
    return definitions(files) + definitions(receipts) +
           QStringList{
               u"CREATE GENERATOR GN_PROGRESSIVO_FATT_EL"_s,
               u"CREATE EXCEPTION EX_FATTURE_ELETTRONICHE 'Il file di una fattura elettronica non cambia.'"_s,
               u"CREATE TRIGGER TG_BU_FATTURE_ELETTRONICHE FOR FATTURE_ELETTRONICHE BEFORE UPDATE OR DELETE AS BEGIN "
               "IF (DELETING OR NEW.NOME <> OLD.NOME OR NEW.IMPRONTA <> OLD.IMPRONTA OR NEW.CONTENUTO IS DISTINCT "
               "FROM OLD.CONTENUTO) THEN EXCEPTION EX_FATTURE_ELETTRONICHE; END"_s};
}

// When what is paid so is due.
QStringList addPaymentDays()
{
    return {u"ALTER TABLE TIPI_PAGAMENTO ADD DECORRENZA VARCHAR(2), ADD GIORNI INTEGER"_s};
}

// The firm's logo, and what was printed of which document: when, from which data, and which file was made of it.
QStringList addPrints()
{
    const Table prints = {u"STAMPE_DOCUMENTI"_s,
                          u"IDSTAMPA_DOCUMENTO"_s,
                          {u"DOCUMENTO VARCHAR(31) NOT NULL"_s, u"IDDOCUMENTO INTEGER NOT NULL"_s,
                           u"STAMPATO_IL TIMESTAMP NOT NULL"_s, u"UTENTE VARCHAR(50)"_s,
                           u"IMPRONTA_DATI VARCHAR(64) NOT NULL"_s, u"NOME_FILE VARCHAR(255)"_s,
                           u"IMPRONTA_FILE VARCHAR(64)"_s},
                          {u"(IDDOCUMENTO)"_s}};
    return QStringList{u"ALTER TABLE AZIENDA ADD LOGO BLOB SUB_TYPE 0"_s} + definitions(prints);
}

// The codes by which readers know articles, each with the pieces it stands for. A code is one article's, whatever its
// case.
QStringList createBarcodes()
{
    return definitions(
        {u"BARCODE_ARTICOLI"_s,
         u"IDBARCODE_ARTICOLI"_s,
         {u"CODICE VARCHAR(48) NOT NULL"_s, u"IDANA_MAGA INTEGER NOT NULL"_s, u"PEZZI DECIMAL(13, 2) DEFAULT 1"_s},
         {u"UNIQUE COMPUTED BY (UPPER(CODICE))"_s, u"(IDANA_MAGA)"_s}});
}

void insertFirstRows(data::Connection &connection, core::Progress &)
{
    const QString option = u"INSERT INTO OPZIONI(OPZIONE, VALORE) VALUES(?, ?)"_s;
    connection.run(option, {u"NUMERAZIONE_UNICA_FATTURE"_s, u"False"_s});
    connection.run(option, {u"FATT_IVA_ESENTE_NOTE"_s,
                            u"Operazione esente da IVA ai sensi dell'art. 10 del D.P.R. 26 ottobre 1972, n. 633."_s});

    const QVariant right =
        connection
            .run(u"INSERT INTO ABILITAZIONI_UTENTE VALUES(0, ?, ?) RETURNING IDABILITAZIONE_UTENTE"_s,
                 {u"Controllo completo"_s, u"Corvane"_s})
            .at(0, u"IDABILITAZIONE_UTENTE");
    const QVariant role =
        connection.run(u"INSERT INTO RUOLI_UTENTE(RUOLO) VALUES(?) RETURNING IDRUOLO_UTENTE"_s, {u"Amministratore"_s})
            .at(0, u"IDRUOLO_UTENTE");
    connection.run(u"INSERT INTO ABILITAZIONI_RUOLI(IDRUOLO_UTENTE, IDABILITAZIONE_UTENTE) VALUES(?, ?)"_s,
                   {role, right});
    connection.run(u"INSERT INTO UTENTI(USER_NAME, NOME) VALUES(?, ?)"_s, {u"AMMINISTRATORE"_s, u"Amministratore"_s});
    connection.run(u"INSERT INTO UTENTI_RUOLI(USER_NAME, IDRUOLO_UTENTE) VALUES(?, ?)"_s, {u"AMMINISTRATORE"_s, role});
}

void run(data::Connection &connection, const QList<schema::Step> &steps)
{
    schema::runSteps(connection, steps, [](const schema::Step &, const std::exception &) { throw; });
}

QString failureText(const std::exception &error)
{
    const auto *refused = dynamic_cast<const data::DatabaseError *>(&error);
    const QString reason =
        refused && refused->isDiskFull() ? refused->text() : core::tr("Il motivo si trova nel registro del programma.");
    return core::tr("Errore durante l'aggiornamento del database!\n\r%1\n\r"
                    "L'aggiornamento continuerà alla prossima apertura.")
        .arg(reason);
}

} // namespace

const QList<schema::Step> &hostSteps()
{
    static const QList<schema::Step> steps = {
        {.object = hostObject, .statements = createTables(), .toVersion = tablesOnly},
        {.object = hostObject, .fromVersion = tablesOnly, .toVersion = baseVersion, .action = insertFirstRows},
        {.object = hostObject,
         .fromVersion = baseVersion,
         .statements = addInvoiceColumns(),
         .toVersion = invoiceCodesVersion},
        {.object = hostObject,
         .fromVersion = invoiceCodesVersion,
         .statements = createInvoiceFiles(),
         .toVersion = invoiceFilesVersion},
        {.object = hostObject,
         .fromVersion = invoiceFilesVersion,
         .statements = addPaymentDays(),
         .toVersion = paymentDaysVersion},
        {.object = hostObject,
         .fromVersion = paymentDaysVersion,
         .statements = addPrints(),
         .toVersion = printsVersion},
        {.object = hostObject,
         .fromVersion = printsVersion,
         .statements = createBarcodes(),
         .toVersion = barcodesVersion},
    };
    return steps;
}

void createHostSchema(data::Connection &connection, const QList<schema::Step> &steps)
{
    if (!data::hasTable(connection, versionTable().name))
        connection.execute(definitions(versionTable()).first());
    run(connection, steps);
}

void recogniseHostSchema(data::Connection &connection)
{
    // The first release made its tables one by one, this one last.
    if (!data::hasTable(connection, baseTables().constLast().name))
        return;
    const QList<schema::Step> noting = {{.object = hostObject, .toVersion = baseVersion}};
    schema::runSteps(connection, noting, [&connection](const schema::Step &, const std::exception &) {
        // Another workstation was faster.
        if (!schema::recordedVersions(connection).contains(hostObject))
            throw;
    });
}

void upgradeHostSchema(data::Connection &connection, const QList<schema::Step> &steps)
{
    recogniseHostSchema(connection);
    try {
        run(connection, steps);
    } catch (const std::exception &error) {
        core::logError(u"aggiornamento dello schema"_s, error);
        throw core::Error(failureText(error));
    }
}

bool isHostSchemaNewer(data::Connection &connection, const QList<schema::Step> &steps)
{
    const QMap<QString, QString> versions = schema::recordedVersions(connection);
    const auto found = versions.find(hostObject);
    return found != versions.end() && std::none_of(steps.begin(), steps.end(), [&found](const schema::Step &step) {
               return step.toVersion == *found;
           });
}

} // namespace host
