#include "host/schema/HostSchema.h"
#include "tests/support/Kit.h"

namespace {

// What is said of a database while another process has it open.
QString problemWhileHeld(const data::DatabaseAddress &address)
{
    QProcess holder;
    holder.start(QCoreApplication::applicationDirPath() + u"/hold_database"_s, {address.file});
    holder.waitForReadyRead(20000);
    QString problem = holder.readAllStandardOutput() == "open\n" ? host::openProblem(address) : u"not held"_s;
    holder.closeWriteChannel();
    holder.waitForFinished(20000);
    return problem;
}

} // namespace

class TestDatabaseSetup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyProblemHasItsSentence()
    {
        const QByteArray bytes = test::contentOf(test::TestDatabase(test::Content::Empty).address().file);
        const QString damaged = u"Il file \"%1\" non è un database oppure è danneggiato."_s;
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"a.fdb"_s);
        QCOMPARE(host::openProblem(test::fileAddress(path)), u"Il database \"%1\" non esiste."_s.arg(path));
        QCOMPARE(host::openProblem(test::fileAddress(folder.path())), damaged.arg(folder.path()));
        // The last one is cut behind the header.
        for (const QByteArray &content :
             {QByteArray(), QByteArray("un testo qualsiasi ").repeated(10000), bytes.left(20000)}) {
            core::saveFile(path, content);
            QCOMPARE(host::openProblem(test::fileAddress(path)), damaged.arg(path));
        }
    }

    void databaseOfAnotherProcessIsInUse()
    {
        const test::TestDatabase database(test::Content::Empty);
        const QString used =
            u"Il database \"%1\" è già in uso da un altro programma. Chiudere l'altro programma e riprovare."_s;
        QCOMPARE(problemWhileHeld(database.address()), used.arg(database.address().file));
        QCOMPARE(host::openProblem(database.address()), QString());
    }

    void unreachableServerIsNamedWithoutThePassword()
    {
        const QTemporaryDir folder;
        core::setLogFile(folder.filePath(u"a.log"_s));
        data::DatabaseAddress address = data::DatabaseAddress::parse(u"127.0.0.1/1:corvane"_s); // nobody listens there
        address.password = u"Segreta1"_s;
        const QString problem = host::openProblem(address);
        core::setLogFile({});
        QCOMPARE(problem,
                 u"Il server \"127.0.0.1\" non è raggiungibile. Verificare che sia acceso e collegato alla rete."_s);
        const QByteArray text = test::contentOf(folder.filePath(u"a.log"_s));
        QVERIFY2(text.contains("network request") && !text.contains("Segreta1"), text.constData());
    }

    void existingFileIsNeverTouched()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"lettera.txt"_s);
        core::saveFile(path, "Cara mamma");
        QVERIFY_EXCEPTION_THROWN(host::createHostDatabase(test::fileAddress(path), false), data::DatabaseError);
        QCOMPARE(test::contentOf(path), QByteArray("Cara mamma"));
    }

    void pathWithColonIsAFile()
    {
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkpath(u"sede: uno"_s));
        const data::DatabaseAddress address = test::fileAddress(folder.filePath(u"sede: uno/ditta 1:2.fdb"_s));
        host::createHostDatabase(address, true);
        QCOMPARE(host::databaseProblem(address), QString());
        // Another program has another second name of it, and is let in alone all the same.
        QVERIFY(problemWhileHeld(address).contains(u"è già in uso"_s));
        test::connectTo(address)->execute(u"UPDATE AZIENDA SET RAGIONESOCIALE = 'Rossi'"_s);
        // It is the file itself that was written to.
        const data::DatabaseAddress plain = test::fileAddress(folder.filePath(u"spostata.fdb"_s));
        QVERIFY(QFile::rename(address.file, plain.file));
        QCOMPARE(test::linesOf(plain, u"SELECT RAGIONESOCIALE FROM AZIENDA"_s), QStringList(u"Rossi"_s));
        QCOMPARE(host::openProblem(address), u"Il database \"%1\" non esiste."_s.arg(address.file));
    }

    void lockFolderOfAnotherAccountIsAvoided()
    {
        const QByteArray before = qgetenv("FIREBIRD_LOCK");
        const QTemporaryDir folder;
        // A file in its place stands for any folder that this account cannot use, root included.
        core::saveFile(folder.filePath(u"lock"_s), "");
        data::useLockFolder(folder.filePath(u"lock"_s));
        const QString chosen = qEnvironmentVariable("FIREBIRD_LOCK");
        qputenv("FIREBIRD_LOCK", before);
        QCOMPARE(chosen, folder.filePath(u"lock-%1"_s.arg(geteuid())));
        QVERIFY(QFileInfo(chosen).isDir());

        // Where a home has no place for it and somebody was faster in the temporary folder, a link does not lead
        // astray.
        const QByteArray temporary = qgetenv("TMPDIR");
        const QString elsewhere = folder.filePath(u"altrove"_s);
        QVERIFY(QDir().mkpath(elsewhere));
        qputenv("TMPDIR", QFile::encodeName(folder.path()));
        QVERIFY(QFile::link(elsewhere, folder.filePath(u"firebird-lock-%1"_s.arg(geteuid()))));
        data::useLockFolder(folder.filePath(u"lock/dentro"_s));
        const QFileInfo found(qEnvironmentVariable("FIREBIRD_LOCK"));
        qputenv("FIREBIRD_LOCK", before);
        temporary.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", temporary);
        QVERIFY2(found.fileName().startsWith(u"firebird-lock-%1-"_s.arg(geteuid())), qPrintable(found.fileName()));
        QVERIFY(found.isDir() && found.permissions() == (QFile::Permissions(0x7700)));
    }
};

static const test::Registered<TestDatabaseSetup> registered;
#include "test_database_setup.moc"
