// What the program does to files that are not the database it works in: import, backup, restore, daily backup.
#include "host/Application.h"
#include "host/transfer/ImportPlan.h"
#include "platform/core/CsvFile.h"
#include "tests/kills/Workload.h"
#include "tests/support/Kit.h"

#include <sys/stat.h>

namespace kills {

namespace {

constexpr int articles = 300;
const QByteArray olderCopy = "an older copy";
const QDate today(2026, 3, 16);

data::DatabaseAddress databaseIn(const QString &folder)
{
    return test::fileAddress(folder + u"/archivio.fdb"_s);
}

QString copyIn(const QString &folder)
{
    return folder + u"/copia.fbk"_s;
}

void layDown(test::Content content, const data::DatabaseAddress &target)
{
    const test::TestDatabase made(content);
    QFile::copy(made.address().file, target.file);
}

void require(bool good, const QString &otherwise)
{
    if (!good)
        throw core::Error(otherwise);
}

// As the program begins, which is what puts right what a cut has left.
void begin(const QString &folder)
{
    core::setClock([] { return QDateTime(today, QTime(10, 30)); });
    data::useLockFolder(qEnvironmentVariable("XDG_DATA_HOME") + u"/lock"_s);
    host::protectData(folder);
    host::removeLeftovers(databaseIn(folder));
}

QStringList articlesIn(const QString &folder)
{
    return test::linesOf(*test::connectTo(databaseIn(folder)),
                         u"SELECT COUNT(*) FROM ANA_MAGA WHERE DESCRIZIONE = 'Vite'"_s);
}

void import(const QString &folder)
{
    begin(folder);
    const int before = articlesIn(folder).value(0).toInt();
    require(before == 0 || before == articles, u"half of an import: %1"_s.arg(before));
    const auto connection = test::connectTo(databaseIn(folder));
    const host::ImportTarget &target = host::importTargets().first();
    const host::ImportLookups lookups(*connection, target);
    core::CsvFile file(folder + u"/articoli.csv"_s);
    core::Progress progress;
    const host::ImportJob job = {target,
                                 lookups,
                                 [&](const auto &use) { file.forEach({}, progress, use); },
                                 {.columns = {0, 1, -1, -1, -1, -1, -1, -1, -1, -1}, .updateExisting = true}};
    host::writeImport(*connection, job, host::planImport(job), progress);
}

Workload importing()
{
    const auto prepare = [](const QString &folder) {
        layDown(test::Content::ModuleSchema, databaseIn(folder));
        QByteArray csv;
        for (int i = 0; i < articles; ++i)
            csv += "X" + QByteArray::number(i) + ";Vite\n";
        core::saveFile(folder + u"/articoli.csv"_s, csv);
    };
    return {.name = u"import"_s,
            .prepare = prepare,
            .run = import,
            .problems =
                [](const QString &folder) {
                    const QStringList found = articlesIn(folder);
                    return found == QStringList(QString::number(articles)) ? QStringList() : found;
                },
            .files = {u"archivio.fdb"_s, u"articoli.csv"_s}};
}

// What is wrong with a copy: empty when it comes back as the database that it was made of.
QStringList problemsOfCopy(const QString &copy, const QString &folder)
{
    const data::DatabaseAddress restored = test::fileAddress(folder + u"/prova.fdb"_s);
    core::Progress progress;
    host::restoreDatabase(copy, restored, progress);
    const QString problem = host::databaseProblem(restored);
    QFile::remove(restored.file);
    return problem.isEmpty() ? QStringList() : QStringList(problem);
}

void backUp(const QString &folder)
{
    begin(folder);
    require(test::contentOf(copyIn(folder)) == olderCopy || problemsOfCopy(copyIn(folder), folder).isEmpty(),
            u"half of a copy"_s);
    core::Progress progress;
    host::backupDatabase(databaseIn(folder), copyIn(folder), progress);
}

Workload backingUp()
{
    const auto prepare = [](const QString &folder) {
        layDown(test::Content::HostSchema, databaseIn(folder));
        core::saveFile(copyIn(folder), olderCopy);
    };
    return {.name = u"backup"_s,
            .prepare = prepare,
            .run = backUp,
            .problems = [](const QString &folder) { return problemsOfCopy(copyIn(folder), folder); },
            .files = {u"archivio.fdb"_s, u"copia.fbk"_s}};
}

// The folder of the daily backups lies in the data folder, which here is the one that is looked at.
void backUpDaily(const QString &folder)
{
    begin(folder);
    core::Progress progress;
    if (host::dailyBackupDue(folder + u"/backup"_s, databaseIn(folder), today))
        host::runDailyBackup(folder + u"/backup"_s, databaseIn(folder), today, progress);
}

Workload backingUpDaily()
{
    return {.name = u"daily"_s,
            .prepare = [](const QString &folder) { layDown(test::Content::HostSchema, databaseIn(folder)); },
            .run = backUpDaily,
            .problems =
                [](const QString &folder) {
                    return problemsOfCopy(host::dailyBackupFile(folder + u"/backup"_s, databaseIn(folder), today),
                                          folder);
                },
            .files = {u"archivio.fdb"_s, u"backup"_s, u"backup/archivio-2026-03-16.fbk"_s}};
}

QStringList firmIn(const data::DatabaseAddress &address)
{
    return test::linesOf(address, u"SELECT RAGIONESOCIALE FROM AZIENDA"_s);
}

QString keptName(int number)
{
    return u"archivio.prima-del-ripristino-20260316-103000%1.fdb"_s.arg(number > 1 ? u"-%1"_s.arg(number) : QString());
}

void restore(const QString &folder)
{
    begin(folder);
    host::requireDatabase(databaseIn(folder));
    core::Progress progress;
    host::restoreDatabase(copyIn(folder), databaseIn(folder), progress);
}

ino_t fileNumber(const QString &path)
{
    struct stat found = {};
    return ::stat(QFile::encodeName(path).constData(), &found) == 0 ? found.st_ino : 0;
}

// The copy's firm in the database, and the firm of before in a file of its own.
QStringList problemsOfRestore(const QString &folder)
{
    QStringList problems;
    if (firmIn(databaseIn(folder)) != QStringList(u"Copiata"_s))
        problems.append(u"the copy is not there"_s);
    const data::DatabaseAddress kept = test::fileAddress(folder + u'/' + keptName(1));
    if (firmIn(kept) != QStringList(u"Prima"_s))
        problems.append(u"the database of before is not there"_s);
    if (fileNumber(kept.file) == fileNumber(databaseIn(folder).file))
        problems.append(u"one file with two names"_s);
    return problems;
}

Workload restoring()
{
    const auto prepare = [](const QString &folder) {
        const data::DatabaseAddress database = databaseIn(folder);
        layDown(test::Content::HostSchema, database);
        const QString name = u"INSERT INTO AZIENDA(RAGIONESOCIALE) VALUES(?)"_s;
        test::connectTo(database)->run(name, {u"Copiata"_s});
        core::Progress progress;
        host::backupDatabase(database, copyIn(folder), progress);
        test::connectTo(database)->run(u"UPDATE AZIENDA SET RAGIONESOCIALE = ?"_s, {u"Prima"_s});
    };
    return {.name = u"restore"_s,
            .prepare = prepare,
            .run = restore,
            .problems = problemsOfRestore,
            .files = {u"archivio.fdb"_s, u"copia.fbk"_s, keptName(1), keptName(2)}};
}

} // namespace

QList<Workload> fileWorkloads()
{
    return {importing(), backingUp(), backingUpDaily(), restoring()};
}

} // namespace kills
