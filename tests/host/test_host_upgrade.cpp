#include "host/backup/UpgradeCopy.h"
#include "host/start/Upgrade.h"
#include "platform/schema/Engine.h"
#include "tests/support/Kit.h"

namespace {

const QString firstRelease = u"1.0.0"_s;
const QString current = u"1.5.0"_s;

/// Steps as they may come: a column, a table with its first row, a change of what is stored.
QList<schema::Step> stepsToCome()
{
    const QString host = u"CORVANE"_s;
    const auto fill = [](data::Connection &connection, core::Progress &) {
        connection.run(u"UPDATE CLIENTI SET PROVA = 'sì'"_s);
    };
    const QStringList column = {u"ALTER TABLE CLIENTI ADD PROVA VARCHAR(7) DEFAULT 'no' NOT NULL"_s};
    const QStringList table = {
        u"CREATE TABLE PROVE(IDPROVA INTEGER NOT NULL, CONSTRAINT PK_PROVE PRIMARY KEY(IDPROVA))"_s,
        u"CREATE INDEX IX1_PROVE ON PROVE COMPUTED BY (IDPROVA + 1)"_s};
    const QStringList row = {u"INSERT INTO PROVE VALUES(7)"_s};
    return host::hostSteps() +
           QList<schema::Step>{
               {.object = host, .fromVersion = current, .statements = column, .toVersion = u"9.1.0"_s},
               {.object = host, .fromVersion = u"9.1.0"_s, .statements = table, .toVersion = u"9.2.0"_s},
               {.object = host, .fromVersion = u"9.2.0"_s, .statements = row, .toVersion = u"9.3.0"_s, .action = fill}};
}

QStringList schemaOf(data::Connection &connection)
{
    return test::linesOf(connection, test::schemaQuery());
}

// For each table the query of the columns that it has now.
QStringList contentQueries(data::Connection &connection)
{
    QStringList queries;
    const QStringList tables = test::linesOf(
        connection, u"SELECT TRIM(RDB$RELATION_NAME), CAST(LIST(TRIM(RDB$FIELD_NAME)) AS VARCHAR(2000)) FROM "
                    "RDB$RELATION_FIELDS WHERE RDB$SYSTEM_FLAG = 0 AND RDB$RELATION_NAME <> 'TABLE_VERSION' GROUP "
                    "BY 1 ORDER BY 1"_s);
    for (const QString &table : tables)
        queries.append(u"SELECT '%1', %2 FROM %1 ORDER BY 2"_s.arg(table.section(u'|', 0, 0), table.section(u'|', 1)));
    return queries;
}

QStringList copiesIn(const QString &folder)
{
    return QDir(folder).entryList({u"*.prima-dell-aggiornamento-*"_s}, QDir::Files, QDir::Name);
}

/// A firm's database of the first release in a folder of its own.
class OldFirm
{
public:
    OldFirm()
    {
        const test::TestDatabase empty(test::Content::Empty);
        QFile::copy(empty.address().file, address().file);
        open();
        test::createFirstRelease(connection);
        // A row in each table, whatever its columns.
        for (const QString &table :
             test::linesOf(connection, u"SELECT RDB$RELATION_NAME FROM RDB$RELATIONS WHERE RDB$SYSTEM_FLAG = 0"_s))
            test::insertInto(connection, table);
        connection.execute(u"DELETE FROM TABLE_VERSION WHERE TABELLA = '-'"_s);
        queries = contentQueries(connection);
        content = test::linesOf(connection, queries);
        connection.close();
    }

    data::DatabaseAddress address() const { return test::fileAddress(folder.filePath(u"ditta.fdb"_s)); }
    void open()
    {
        connection.setConnectionString(data::nativeConnectionString(address()));
        connection.open();
    }

    QTemporaryDir folder;
    data::Connection connection;
    QStringList queries;
    QStringList content;
};

} // namespace

class TestHostUpgrade : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void firstReleaseEndsLikeANewDatabase_data() { test::cases({u"as it is"_s, u"with steps to come"_s}); }

    void firstReleaseEndsLikeANewDatabase()
    {
        const bool withStepsToCome = test::currentCase() != u"as it is"_s;
        const QList<schema::Step> steps = withStepsToCome ? stepsToCome() : host::hostSteps();
        OldFirm firm;
        QCOMPARE(host::databaseProblem(firm.address()), QString());
        host::upgradeHost(firm.address(), steps);
        firm.open();
        QCOMPARE(test::linesOf(firm.connection, firm.queries), firm.content);
        if (withStepsToCome)
            QCOMPARE(test::linesOf(firm.connection, u"SELECT PROVA, IDPROVA FROM CLIENTI, PROVE"_s),
                     QStringList(u"sì|7"_s));
        // The module's part is up to date but for the indexes, which it makes when it starts.
        test::ModuleDatabase fresh(test::Content::Empty);
        host::createHostSchema(fresh.connection(), steps);
        AggiornaDatabase();
        QStringList expected = schemaOf(fresh.connection());
        expected.removeIf([](const QString &line) { return line.startsWith(u"index IX_MMG_"); });
        const QStringList found = schemaOf(firm.connection);
        for (qsizetype line = 0; line < expected.size(); ++line)
            QCOMPARE(found.value(line), expected[line]);
        QCOMPARE(found.size(), expected.size());

        const QStringList copies = copiesIn(firm.folder.path());
        QCOMPARE(copies.size(), 1);
        firm.connection.close();
        // A second start does nothing.
        host::upgradeHost(firm.address(), steps);
        QCOMPARE(copiesIn(firm.folder.path()), copies);
        const auto copy = test::connectTo(test::fileAddress(firm.folder.filePath(copies.first())));
        QCOMPARE(test::linesOf(*copy, firm.queries), firm.content);
        QCOMPARE(schema::recordedVersions(*copy).value(u"CORVANE"_s), firstRelease);
    }

    void upgradeInterruptedAnywhereGoesOn()
    {
        const OldFirm original;
        const QList<schema::Step> steps = stepsToCome();
        QStringList expected;
        const auto attempt = [&](int failingStatement) {
            const QTemporaryDir folder;
            const data::DatabaseAddress address = test::fileAddress(folder.filePath(u"ditta.fdb"_s));
            QFile::copy(original.address().file, address.file);
            const auto connection = test::connectTo(address);
            int left = failingStatement;
            QString told;
            test::refusing(
                *connection, [&left](const QString &) { return --left == 0; },
                [&] { told = test::errorOf([&] { host::upgradeHostSchema(*connection, steps); }); });
            host::upgradeHostSchema(*connection, steps);
            if (left > 0)
                expected = schemaOf(*connection);
            else if (schemaOf(*connection) != expected)
                return u"different after statement %1"_s.arg(failingStatement);
            if (test::linesOf(*connection, original.queries) != original.content)
                return u"rows changed after statement %1"_s.arg(failingStatement);
            return told;
        };
        QCOMPARE(attempt(10'000), u"no error"_s);
        int interrupted = 0;
        for (;; ++interrupted) {
            const QString told = attempt(interrupted + 1);
            if (told == u"no error"_s)
                break;
            QVERIFY2(told == u"rifiutato"_s || told.contains(u"continuerà alla prossima apertura"_s), qPrintable(told));
        }
        QVERIFY2(interrupted > 15, qPrintable(QString::number(interrupted)));
    }

    void newerDatabaseIsRefused()
    {
        OldFirm firm;
        host::upgradeHost(firm.address(), stepsToCome());
        QCOMPARE(host::databaseProblem(firm.address()),
                 u"Il database \"%1\" è stato aggiornato da una versione più recente del programma: per aprirlo "
                 "serve quella."_s.arg(firm.address().file));
        // A version of the module that nobody knows is passed over.
        OldFirm other;
        test::connectTo(other.address())
            ->execute(u"UPDATE TABLE_VERSION SET VERSIONE = '9.0.0' WHERE TABELLA = 'FATT_ACC'"_s);
        QCOMPARE(host::databaseProblem(other.address()), QString());
        host::upgradeHost(other.address());
        QCOMPARE(host::databaseProblem(other.address()), QString());
    }

    void copiesAreFewAndOneForEachState()
    {
        const auto clockBack = qScopeGuard([] { core::setClock({}); });
        const QTemporaryDir folder;
        const QString file = folder.filePath(u"ditta (1).fdb"_s);
        for (int day = 1; day <= 5; ++day) {
            core::setClock([day] { return QDateTime(QDate(2026, 3, day), QTime(9, 5)); });
            core::saveFile(file, QByteArray(day, 'x'));
            host::copyBeforeUpgrade(test::fileAddress(file), {{u"T"_s, QString::number(std::min(day, 4))}});
        }
        const QStringList copies = copiesIn(folder.path());
        QStringList days;
        for (const QString &copy : copies) {
            QVERIFY2(copy.startsWith(u"ditta (1).prima-dell-aggiornamento-2026030"), qPrintable(copy));
            const QFileInfo info(folder.filePath(copy));
            days.append(copy.section(u'-', 3, 4).right(8) + u'=' + QString::number(info.size()));
            QVERIFY(!(info.permissions() & (QFile::ReadGroup | QFile::ReadOther)));
        }
        // The fifth state has its copy from the day before.
        QCOMPARE(days, QStringList({u"2-090500=2"_s, u"3-090500=3"_s, u"4-090500=4"_s}));
        QCOMPARE(test::filesIn(folder.path()).size(), 4);
    }

    void databaseInUseIsNotCopied()
    {
        OldFirm firm;
        firm.open();
        const QString told = test::errorOf([&firm] { host::copyBeforeUpgrade(firm.address(), {}); });
        QVERIFY2(told.contains(u"è in uso da un altro programma"_s) && told.contains(u"non è stato modificato"_s),
                 qPrintable(told));
        QCOMPARE(copiesIn(firm.folder.path()), QStringList());
    }
};

static const test::Registered<TestHostUpgrade> registered;
#include "test_host_upgrade.moc"
