#include "host/Application.h"
#include "tests/kills/Workload.h"
#include "tests/support/Kit.h"

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
QStringList finished()
{
    return {test::schemaQuery(), u"SELECT OPZIONE FROM OPZIONI UNION ALL SELECT ABILITAZIONE_UTENTE FROM "
                                 "ABILITAZIONI_UTENTE ORDER BY 1"_s};
}

const QString copies = u"archivio.prima-dell-aggiornamento-*.fdb"_s;

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

QStringList compare(const QString &file, test::Content content, const QStringList &queries)
{
    const test::TestDatabase whole(content);
    return differences(test::linesOf(*test::connectTo(test::fileAddress(file)), queries),
                       test::linesOf(*test::connectTo(whole.address()), queries));
}

// A run of the product on the folder's database, which ends as a whole one of the module. An empty one is made anew:
// once the host's tables are there and the module's are not, the next run is an upgrade.
Workload productRun(const QString &name, const QStringList &more, const std::function<void(const QString &)> &prepare)
{
    return {
        .name = name,
        .prepare = prepare,
        .command =
            [more](const QString &folder) {
                return QStringList{product(), u"--database"_s, databaseIn(folder), u"--upgrade"_s} + more;
            },
        .problems =
            [](const QString &folder) { return compare(databaseIn(folder), test::Content::ModuleSchema, finished()); },
        .files = {u"archivio.fdb"_s, copies}};
}

// From a database that `makeOld` has made out of one with `content`.
Workload upgradeFrom(const QString &what, test::Content content, const std::function<void(data::Connection &)> &makeOld)
{
    return productRun(u"upgrade-"_s + what, {}, [content, makeOld](const QString &folder) {
        test::ModuleDatabase old(content);
        makeOld(old.connection());
        old.connection().close();
        QFile::copy(old.database().address().file, databaseIn(folder));
    });
}

// The database of a release that knew the first `steps` steps of the module only.
Workload upgradeAfter(int steps)
{
    return upgradeFrom(QString::number(steps), test::Content::HostSchema, [steps](data::Connection &connection) {
        schema::runModuleSteps(connection, schema::moduleSteps().first(steps));
    });
}

// The first release noted no version of the host's tables. The module's last steps are undone in their versions, so
// that there is an upgrade to copy the database for.
Workload firstRelease()
{
    return upgradeFrom(u"release"_s, test::Content::Empty, [](data::Connection &connection) {
        test::createFirstRelease(connection);
        connection.execute(u"UPDATE TABLE_VERSION SET VERSIONE = '1.3.0' WHERE TABELLA = 'FATT_ACC'"_s);
    });
}

QList<Workload> allWorkloads()
{
    QList<Workload> all = {productRun(u"creation"_s, {u"--empty"_s}, [](const QString &) {})};
    for (int steps = 0; steps < schema::moduleSteps().size(); ++steps)
        all.append(upgradeAfter(steps));
    all.append(firstRelease());
    return all + fileWorkloads();
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
