#include "host/Application.h"
#include "host/DatabaseSetup.h"
#include "magazzino/schema/Motore.h"
#include "magazzino/schema/Passi.h"
#include "tests/kills/Workload.h"
#include "tests/support/TestDatabase.h"

#include <QCoreApplication>
#include <QFile>

using namespace Qt::StringLiterals;

namespace kills {

namespace {

QString databaseIn(const QString &folder)
{
    return folder + u"/archivio.fdb"_s;
}

QString product()
{
    return QCoreApplication::applicationDirPath() + u"/corvane"_s;
}

// What the finished database must hold, whichever way it came about.
const QString schemaContent = uR"(
    SELECT 'column ' || TRIM(F.RDB$RELATION_NAME) || '.' || TRIM(F.RDB$FIELD_NAME) || ' ' || T.RDB$FIELD_TYPE || ' ' ||
        COALESCE(T.RDB$CHARACTER_LENGTH, 0) || ' ' || COALESCE(F.RDB$NULL_FLAG, 0)
    FROM RDB$RELATION_FIELDS F JOIN RDB$FIELDS T ON T.RDB$FIELD_NAME = F.RDB$FIELD_SOURCE
    WHERE F.RDB$SYSTEM_FLAG = 0
    UNION ALL SELECT 'index ' || TRIM(RDB$INDEX_NAME) || ' ' || COALESCE(RDB$INDEX_INACTIVE, 0) FROM RDB$INDICES
    WHERE RDB$SYSTEM_FLAG = 0 AND RDB$INDEX_NAME NOT STARTING WITH 'RDB$'
    UNION ALL SELECT 'trigger ' || TRIM(RDB$TRIGGER_NAME) FROM RDB$TRIGGERS
    WHERE RDB$SYSTEM_FLAG = 0 AND RDB$TRIGGER_NAME NOT STARTING WITH 'CHECK_'
    UNION ALL SELECT 'generator ' || TRIM(RDB$GENERATOR_NAME) FROM RDB$GENERATORS WHERE RDB$SYSTEM_FLAG = 0
    UNION ALL SELECT 'version ' || TABELLA || ' ' || VERSIONE FROM TABLE_VERSION
    UNION ALL SELECT 'option ' || OPZIONE FROM OPZIONI
    UNION ALL SELECT 'right ' || ABILITAZIONE_UTENTE FROM ABILITAZIONI_UTENTE
    ORDER BY 1)"_s;

QStringList contentOf(const data::DatabaseAddress &address, const QStringList &queries)
{
    data::Connection connection;
    connection.setConnectionString(data::nativeConnectionString(address));
    connection.open();
    QStringList lines;
    for (const QString &query : queries)
        lines += test::linesOf(connection, query);
    return lines;
}

QStringList differences(const QStringList &found, const QStringList &wanted)
{
    QStringList result;
    for (const QString &line : wanted) {
        if (found.count(line) < wanted.count(line))
            result.append(u"missing: "_s + line);
    }
    for (const QString &line : found) {
        if (found.count(line) > wanted.count(line))
            result.append(u"too many: "_s + line);
    }
    return result;
}

data::DatabaseAddress addressOf(const QString &file)
{
    data::DatabaseAddress address;
    address.file = file;
    return address;
}

QStringList compare(const QString &file, test::Content content, const QStringList &queries)
{
    const test::TestDatabase whole(content);
    return differences(contentOf(addressOf(file), queries), contentOf(whole.address(), queries));
}

Workload emptyFirm()
{
    return {.name = u"creation"_s,
            .prepare = [](const QString &) {},
            .command =
                [](const QString &folder) {
                    return QStringList{product(), u"--database"_s, databaseIn(folder), u"--empty"_s, u"--upgrade"_s};
                },
            .problems =
                [](const QString &folder) {
                    return compare(databaseIn(folder), test::Content::ModuleSchema, {schemaContent});
                },
            .files = {u"archivio.fdb"_s}};
}

// The database of a release that knew the first `steps` steps only.
Workload upgradeAfter(int steps)
{
    const auto prepare = [steps](const QString &folder) {
        test::ModuleDatabase old(test::Content::HostSchema);
        schema::eseguiPassi(old.connection(), schema::passi().first(steps));
        old.connection().close();
        QFile::copy(old.database().address().file, databaseIn(folder));
    };
    return {.name = u"upgrade-%1"_s.arg(steps),
            .prepare = prepare,
            .command =
                [](const QString &folder) {
                    return QStringList{product(), u"--database"_s, databaseIn(folder), u"--upgrade"_s};
                },
            .problems =
                [](const QString &folder) {
                    return compare(databaseIn(folder), test::Content::ModuleSchema, {schemaContent});
                },
            .files = {u"archivio.fdb"_s}};
}

QList<Workload> allWorkloads()
{
    QList<Workload> all = {emptyFirm()};
    for (int steps = 0; steps < schema::passi().size(); ++steps)
        all.append(upgradeAfter(steps));
    return all;
}

} // namespace

const QList<Workload> &workloads()
{
    static const QList<Workload> all = allWorkloads();
    return all;
}

QStringList ownCommand(const QString &work, const QString &workload, const QString &folder)
{
    return {QCoreApplication::applicationFilePath(), u"--"_s + work, workload, folder};
}

} // namespace kills
