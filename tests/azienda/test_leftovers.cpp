#include "host/schema/Creation.h"
#include "host/schema/HostSchema.h"
#include "host/schema/HostTables.h"
#include "host/start/Startup.h"
#include "tests/support/Kit.h"

namespace {

using Make = std::function<void(data::Connection &)>;

void defineTables(data::Connection &connection, qsizetype count)
{
    for (const host::Table &table : host::baseTables().first(count)) {
        for (const QString &statement : host::definitions(table))
            connection.execute(statement);
    }
}

} // namespace

Q_DECLARE_METATYPE(Make)

/// What creations that were cut off have left is replaced, and nothing else is.
class TestLeftovers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyWhatHoldsNothingIsReplaced_data()
    {
        test::columns<Make, bool>();
        const auto row = [](const char *name, bool replaced, const Make &make) {
            QTest::newRow(name) << make << replaced;
        };
        row("empty database", true, [](data::Connection &) {});
        row("first release, some tables", true, [](data::Connection &connection) { defineTables(connection, 4); });
        row("first release, all tables", true, [](data::Connection &connection) {
            connection.execute(host::definitions(host::versionTable()).first());
            defineTables(connection, host::baseTables().size());
        });
        row("all but the end", true, [](data::Connection &connection) {
            host::beginCreation(connection);
            host::createHostSchema(connection);
        });
        row("a row in a table", false, [](data::Connection &connection) {
            defineTables(connection, 4);
            connection.execute(u"INSERT INTO UM(UM) VALUES('PZ')"_s);
        });
        row("another table", false, [](data::Connection &connection) {
            defineTables(connection, 4);
            connection.execute(u"CREATE TABLE ALTRO(TESTO VARCHAR(5))"_s);
        });
        row("whole", false, [](data::Connection &connection) {
            host::beginCreation(connection);
            host::createHostSchema(connection);
            host::endCreation(connection);
        });
    }

    void onlyWhatHoldsNothingIsReplaced()
    {
        const auto [make, replaced] = test::row<Make, bool>();
        const QTemporaryDir folder;
        const data::DatabaseAddress address = test::fileAddress(folder.filePath(u"ditta.fdb"_s));
        QVERIFY(QFile::copy(test::TestDatabase(test::Content::Empty).address().file, address.file));
        make(*test::connectTo(address));
        const QString tables = u"SELECT RDB$RELATION_NAME FROM RDB$RELATIONS WHERE RDB$SYSTEM_FLAG = 0"_s;
        const QStringList before = test::linesOf(address, tables);
        QCOMPARE(host::isUnfinished(address), replaced);
        QCOMPARE(host::databaseProblem(address).contains(u"va creato di nuovo"_s), replaced);
        if (replaced) {
            host::createHostDatabase(address, false);
            QCOMPARE(host::databaseProblem(address), QString());
        } else {
            QVERIFY_EXCEPTION_THROWN(host::createHostDatabase(address, false), data::DatabaseError);
            QCOMPARE(test::linesOf(address, tables), before);
        }
        QCOMPARE(test::filesIn(folder.path()), QStringList(u"ditta.fdb"_s));
    }

    void replacementByAnotherProgramStays()
    {
        const QTemporaryDir folder;
        const data::DatabaseAddress address = test::fileAddress(folder.filePath(u"ditta.fdb"_s));
        core::saveFile(address.file, QByteArray());
        // While this one is being filled.
        const auto other = [&address](data::Connection &) {
            host::createFilledDatabase(address, [](data::Connection &connection) {
                connection.execute(u"INSERT INTO UM(UM) VALUES('PZ')"_s);
            });
        };
        QVERIFY_EXCEPTION_THROWN(host::createFilledDatabase(address, other), data::DatabaseError);
        QCOMPARE(test::linesOf(address, u"SELECT UM FROM UM"_s), QStringList(u"PZ"_s));
        QCOMPARE(test::filesIn(folder.path()), QStringList(u"ditta.fdb"_s));
    }

    void demonstrationReplacesAfterAQuestion_data()
    {
        const QByteArray bytes = test::contentOf(test::TestDatabase(test::Content::Empty).address().file);
        const QString unreadable = u"non è un database oppure è danneggiato"_s;
        test::table<QByteArray, QString, bool>(
            {{"no bytes", QByteArray(""), unreadable, false},
             {"empty database", bytes, u"va creato di nuovo"_s, false},
             {"cut in its first moments", bytes.left(20000), unreadable, true},
             {"first page not written", QByteArray(8192, '\0') + bytes.mid(8192), unreadable, true}});
    }

    void demonstrationReplacesAfterAQuestion()
    {
        const auto [content, problem, kept] = test::row<QByteArray, QString, bool>();
        const QTemporaryDir folder;
        const data::DatabaseAddress address = test::fileAddress(folder.filePath(u"corvane.fdb"_s));
        core::saveFile(address.file, content);
        test::ScriptedMessages messages;
        test::ScriptedDialogs dialogs;
        messages.expectPart(u"Errore"_s, problem);
        for (const core::Answer answer : {core::Answer::No, core::Answer::Yes}) {
            dialogs.expect(test::pressing(u"cmdDemo"_s));
            messages.expectPart(u"Conferma"_s, u"si era interrotta"_s, answer);
            messages.whileShown([&, size = content.size()] { QVERIFY(test::contentOf(address.file).size() == size); });
        }
        dialogs.expect(test::pressing(u"cmdAnnulla"_s)); // of the login
        dialogs.expect([](QDialog &dialog) { dialog.reject(); });
        host::runSessions({}, folder.path());
        QCOMPARE((messages.verify() + dialogs.verify()).join(u"; "_s), QString());
        QCOMPARE(host::databaseProblem(address), QString());
        QCOMPARE(test::linesOf(address, u"SELECT FIRST 1 'clienti' FROM CLIENTI"_s), QStringList(u"clienti"_s));
        const QStringList old = QDir(folder.path()).entryList({u"corvane.incompleto-*.fdb"_s});
        QCOMPARE(old.size(), kept ? 1 : 0);
        if (kept)
            QCOMPARE(test::contentOf(folder.filePath(old.first())), content);
    }

    // Databases that earlier faults of the program have left; they are too large to be kept with the tests.
    void databasesLeftByFaultsEndUsable()
    {
        const QDir evidence(qEnvironmentVariable("MAGAZZINO_EVIDENCE"));
        const QStringList files = evidence.entryList({u"*.fdb.gz"_s}, QDir::Files);
        if (!qEnvironmentVariableIsSet("MAGAZZINO_EVIDENCE") || files.isEmpty())
            QSKIP("MAGAZZINO_EVIDENCE names no folder with databases (*.fdb.gz) that faults have left.");
        const test::TestDatabase whole(test::Content::ModuleSchema);
        const QStringList schema = test::linesOf(whole.address(), test::schemaQuery());
        for (const QString &file : files) {
            const QTemporaryDir home;
            const data::DatabaseAddress address = test::fileAddress(home.filePath(u"ditta.fdb"_s));
            QProcess unpacked;
            unpacked.setStandardOutputFile(address.file);
            unpacked.start(u"gzip"_s, {u"-dc"_s, evidence.filePath(file)});
            QVERIFY(unpacked.waitForFinished() && unpacked.exitCode() == 0);
            const bool unfinished = host::isUnfinished(address);
            QCOMPARE(unfinished, file.startsWith(u"half-created"));
            test::Program program(home.path(), QStringList{u"--database"_s, address.file, u"--upgrade"_s} +
                                                   (unfinished ? QStringList(u"--empty"_s) : QStringList()));
            QVERIFY2(program.exitCode() == 0, program.told().constData());
            QCOMPARE(test::linesOf(address, test::schemaQuery()), schema);
        }
    }
};

static const test::Registered<TestLeftovers> registered;
#include "test_leftovers.moc"
