#include "magazzino/schema/ModuleSteps.h"

#include "magazzino/MMGUtils_insiemi.h"
#include "magazzino/schema/Tables.h"
#include "platform/core/Format.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/data/Connection.h"
#include "platform/data/SqlText.h"

using namespace Qt::StringLiterals;

namespace schema {

namespace {

const QString firstVersion = u"1.0.0"_s;

QStringList firstRows(QStringView table)
{
    if (table != u"CAUSALI_MAGA")
        return {};
    return {u"INSERT INTO CAUSALI_MAGA VALUES(1, "_s + data::quoted(u"Carico"_s) + u')',
            u"INSERT INTO CAUSALI_MAGA VALUES(2, "_s + data::quoted(u"Scarico"_s) + u')'};
}

QString addColumn(const QString &table, const QString &column, const QString &type, const QString &value)
{
    return u"ALTER TABLE %1 ADD %2 %3 DEFAULT %4 NOT NULL"_s.arg(table, column, type, value);
}

// Foreign VAT numbers have up to 13 characters.
QString widenPartitaIVA(const QString &table, const QString &column)
{
    return u"ALTER TABLE %1 ALTER COLUMN %2 TYPE VARCHAR(13)"_s.arg(table, column);
}

QString falseText()
{
    return data::quoted(core::flagText(false));
}

// Every load takes the article's cost of today. An article that is gone yields nulls, which the columns refuse: then
// the whole step fails, as intended.
QString revalueLoads()
{
    return u"UPDATE MOVI_MAGA SET COSTO = (SELECT ANA_MAGA.COSTO FROM ANA_MAGA WHERE ANA_MAGA.CODICE = "
           "MOVI_MAGA.CODICE ), VALORE = (SELECT ANA_MAGA.COSTO FROM ANA_MAGA WHERE ANA_MAGA.CODICE = "
           "MOVI_MAGA.CODICE ), VALORE_IMPORTO = ((SELECT ANA_MAGA.COSTO FROM ANA_MAGA WHERE ANA_MAGA.CODICE = "
           "MOVI_MAGA.CODICE )  * MOVI_MAGA.QUANTITA ) WHERE TIPO_MOVIMENTO = "_s +
           data::quoted(u"Carico"_s);
}

bool hasMovements(data::Connection &connection)
{
    return !connection.select(u"SELECT FIRST 1 IDMOVI_MAGA FROM MOVI_MAGA"_s).isEmpty();
}

// The module's name has three z's in the rows of existing databases; it stays that way.
QStringList rights()
{
    QStringList statements;
    for (const QString &right :
         {u"Fatture acc. (visualizzazione)"_s, u"Fatture acc. (modifica)"_s, u"Fatture acc. (eliminazione)"_s})
        statements.append(u"INSERT INTO ABILITAZIONI_UTENTE VALUES(0, "_s + data::quoted(right) + u", "_s +
                          data::quoted(u"Magazzzino"_s) + u')');
    return statements;
}

QList<Step> creations()
{
    QList<Step> steps;
    for (const Table &table : tables())
        steps.append({.object = table.name,
                      .statements = definition(table),
                      .toVersion = firstVersion,
                      .following = firstRows(table.name)});
    return steps;
}

QList<Step> updates()
{
    const QString ddt = u"DDT_SCARICO"_s;
    const QString fatture = u"FATT_ACC"_s;
    const QString bolle = u"BOLLE_CARICO"_s;
    const QString fornitori = u"FORNITORI"_s;
    const auto cliente = QString::number(static_cast<int>(TTipoAnagrafica::Cliente));
    return {
        {ddt, firstVersion, {addColumn(ddt, u"TIPO_ANAGRAFICA"_s, u"INTEGER"_s, cliente)}, u"1.0.1"_s},
        {.object = u"MOVI_MAGA"_s,
         .fromVersion = firstVersion,
         .statements = {revalueLoads()},
         .toVersion = u"1.0.1"_s,
         .action = [](data::Connection &connection,
                      core::Progress &progress) { RivalorizzaTuttiGliScarichi(connection, progress); },
         .takesLong = hasMovements},
        {fatture, firstVersion, {addColumn(fatture, u"NOTIFICATO"_s, u"VARCHAR(5)"_s, falseText())}, u"1.1.0"_s},
        {fornitori, firstVersion, {widenPartitaIVA(fornitori, u"PARTITAIVA"_s)}, u"1.1.0"_s},
        {fatture, u"1.1.0"_s, {widenPartitaIVA(fatture, u"CLI_PARTITAIVA"_s)}, u"1.2.0"_s},
        {bolle, firstVersion, {widenPartitaIVA(bolle, u"FOR_PARTITAIVA"_s)}, u"1.1.0"_s},
        {ddt, u"1.0.1"_s, {widenPartitaIVA(ddt, u"CLI_PARTITAIVA"_s)}, u"1.2.0"_s},
        {u"MMG_ABILITAZIONI"_s, {}, rights(), firstVersion},
        {fatture, u"1.2.0"_s, {addColumn(fatture, u"IVA_ESENTE"_s, u"VARCHAR(5)"_s, falseText())}, u"1.3.0"_s},
        {fatture, u"1.3.0"_s, {u"UPDATE FATT_ACC SET IVA_ESENTE = "_s + falseText()}, u"1.4.0"_s},
    };
}

LongRunner &longRunner()
{
    static LongRunner runner;
    return runner;
}

} // namespace

void setLongRunner(LongRunner runner)
{
    longRunner() = std::move(runner);
}

const QList<Step> &moduleSteps()
{
    static const QList<Step> all = creations() + updates();
    return all;
}

void runModuleSteps(data::Connection &connection, const QList<Step> &steps)
{
    const auto report = [](const Step &step, const std::exception &error) {
        if (dynamic_cast<const core::Cancelled *>(&error)) {
            core::inform(nullptr,
                         core::tr("L'aggiornamento dei valori di magazzino è stato annullato: costi e valori dei "
                                  "movimenti sono rimasti quelli di prima.\n\rL'aggiornamento ricomincia alla "
                                  "prossima apertura dell'archivio."));
            return;
        }
        core::logError(u"AggiornaDatabase "_s + step.object, error);
        core::showMessage({u"Errore"_s, u"Errore durante l'aggiornamento del database!"_s});
    };
    runSteps(connection, steps, report, longRunner());
}

} // namespace schema
