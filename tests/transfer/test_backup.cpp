#include "host/backup/BackupCommands.h"
#include "tests/support/Kit.h"

#include <atomic>
#include <thread>

namespace {

QStringList firms(const data::DatabaseAddress &address)
{
    return test::linesOf(address, u"SELECT RAGIONESOCIALE FROM AZIENDA"_s);
}

void rename(const data::DatabaseAddress &address, const QString &firm)
{
    test::connectTo(address)->run(u"UPDATE AZIENDA SET RAGIONESOCIALE = ?"_s, {firm});
}

} // namespace

class TestBackup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        searchPath_ = qgetenv("PATH");
        core::setClock([] { return QDateTime(QDate(2026, 3, 16), QTime(10, 30)); });
        folder_ = std::make_unique<QTemporaryDir>();
        database_.file = path(u"ditta è.fdb"_s);
        const test::TestDatabase demo(test::Content::DemoData);
        QVERIFY(QFile::copy(demo.address().file, database_.file));
    }

    void cleanup()
    {
        qputenv("PATH", searchPath_);
        core::setClock({});
        folder_.reset();
    }

    void backupComesBackAndTheOldDatabaseStays()
    {
        test::ScriptedMessages messages;
        test::ScriptedDialogs dialogs;
        const QStringList before = firms(database_);
        const QString backup = path(u"copia.fbk"_s);
        core::saveFile(backup, "an older one");
        dialogs.expect(test::waiting());
        messages.expectInformation(u"La copia di sicurezza è stata fatta e verificata:\n\r"_s + backup);
        bool ended = false;
        QVERIFY(host::makeBackup(nullptr, database_, backup, [&ended] { ended = true; }));
        QVERIFY(ended);

        rename(database_, u"Dopo"_s);
        QString kept = path(u"ditta è.prima-del-ripristino-20260316-103000.fdb"_s);
        for (int i = 0; i < 2; ++i) {
            dialogs.expect(test::waiting());
            messages.expectInformation(
                u"La copia è stata ripristinata e verificata.\n\rIl database precedente è conservato in:\n\r"_s + kept);
            const QByteArray replaced = test::contentOf(database_.file);
            QVERIFY(host::restoreBackup(nullptr, backup, database_));
            QCOMPARE(firms(database_), before);
            // Checking that nobody uses the file counts attachments in its first page.
            QCOMPARE(test::contentOf(kept).mid(8192), replaced.mid(8192));
            kept.replace(u"103000.fdb"_s, u"103000-2.fdb"_s);
            core::saveFile(database_.file, "a damaged database is replaced, too");
        }
        QCOMPARE(files().size(), 4);
    }

    void refusedBackupsChangeNothing_data()
    {

        const QString damaged = u"Il file non è una copia di sicurezza, oppure è danneggiato o incompleto."_s;
        test::table<QString, QString>(
            {{"text", u"text"_s, damaged},
             {"cut", u"cut"_s, damaged},
             // What the program says then depends on what was there.
             {"holes", u"holes"_s, u"danneggiato"_s},
             {"other program", u"other"_s, u"La copia non contiene un database di questo programma."_s},
             {"newer program", u"newer"_s, u"La copia è di una versione più recente del programma"_s},
             {"cancelled", u"whole"_s, {}}});
    }

    void refusedBackupsChangeNothing()
    {
        const auto [kind, error] = test::row<QString, QString>();
        const QString backup = path(u"copia.fbk"_s);
        data::DatabaseAddress source = database_;
        if (kind == u"other") {
            source.file = path(u"altro.fdb"_s);
            data::createDatabase(source);
            test::connectTo(source)->execute(u"CREATE TABLE COSE(ID INTEGER)"_s);
        }
        if (kind == u"newer")
            test::connectTo(source)->execute(
                u"UPDATE TABLE_VERSION SET VERSIONE = '9.0.0' WHERE TABELLA = 'CORVANE'"_s);
        QCOMPARE(errorOfBackup(source, backup), u"no error"_s);
        QByteArray content = test::contentOf(backup);
        if (kind == u"text")
            content = "Codice;Descrizione\n";
        else if (kind == u"cut")
            content.truncate(content.size() / 2);
        else if (kind == u"holes")
            content.replace(content.size() / 2, 512, QByteArray(512, '\0'));
        core::saveFile(backup, content);

        const QByteArray current = test::contentOf(database_.file);
        const QStringList before = files();
        if (kind == u"whole") {
            // Cancelled as soon as the program says what it does.
            core::Progress progress;
            std::atomic<bool> ended = false;
            std::thread user([&] {
                while (progress.text().isEmpty() && !ended)
                    std::this_thread::yield();
                progress.cancel();
            });
            const QString told = test::errorOf([&] { host::restoreDatabase(backup, database_, progress); });
            ended = true;
            user.join();
            QCOMPARE(told, u"cancelled"_s);
        } else {
            const QString told = errorOfRestore(backup, database_);
            QVERIFY2(told.contains(error), qPrintable(told));
        }
        QCOMPARE(files(), before);
        QCOMPARE(test::contentOf(database_.file), current);
    }

    // The engine's programs take what stands before a colon for a server.
    void pathWithColonIsAFile()
    {
        const QDir folder(path(u"sede: uno"_s));
        QVERIFY(folder.mkpath(u"."_s));
        data::DatabaseAddress database = test::fileAddress(folder.filePath(u"ditta 1:2.fdb"_s));
        QVERIFY(QFile::copy(database_.file, database.file));
        const QString backup = folder.filePath(u"copia 1:2.fbk"_s);
        QCOMPARE(errorOfBackup(database, backup), u"no error"_s);
        rename(database, u"Prima"_s);
        QCOMPARE(errorOfRestore(backup, database), u"no error"_s);
        QVERIFY(!firms(database).contains(u"Prima"_s));
        database.file = folder.filePath(u"ditta 1:2.prima-del-ripristino-20260316-103000.fdb"_s);
        QVERIFY(firms(database).contains(u"Prima"_s));
        QCOMPARE(test::filesIn(folder.path()).size(), qsizetype(3));
    }

    void failedBackupLeavesNothing()
    {
        const QString backup = path(u"copia.fbk"_s);
        core::saveFile(backup, "an older one");
        const QStringList before = files();
        auto user = test::connectTo(database_);
        QCOMPARE(errorOfBackup(database_, backup),
                 u"Il database è in uso: chiudere gli altri programmi che lo usano e riprovare."_s);
        user.reset();
        core::Progress cancelled;
        cancelled.cancel();
        QCOMPARE(test::errorOf([&] { host::backupDatabase(database_, backup, cancelled); }), u"cancelled"_s);
        QCOMPARE(errorOfBackup(database_, path(u"manca/copia.fbk"_s)),
                 u"La cartella \"%1\" non esiste."_s.arg(path(u"manca"_s)));
        qputenv("PATH", "/nowhere");
        test::ScriptedMessages messages;
        test::ScriptedDialogs dialogs;
        dialogs.expect(test::waiting());
        messages.expectWarning(
            u"La copia di sicurezza giornaliera non è riuscita:\n\rManca il programma gbak di Firebird: "
            "installare il pacchetto firebird3.0-utils."_s);
        host::backupAtExit(nullptr, folder_->path(), database_);
        QCOMPARE(files(), before);
        QCOMPARE(test::contentOf(backup), "an older one");
    }

    void passwordIsInTheEnvironmentOnly()
    {
        core::saveFile(path(u"gbak"_s),
                       "#!/bin/sh\necho \"$@\" \"$ISC_USER\" >\"$OUT\"\nenv | grep -c '^ISC_PASSWORD=segreta$' "
                       ">>\"$OUT\"\nexit 1\n");
        QFile::setPermissions(path(u"gbak"_s), QFile::ReadOwner | QFile::ExeOwner);
        qputenv("PATH", QFile::encodeName(folder_->path()) + ':' + searchPath_);
        qputenv("OUT", QFile::encodeName(path(u"out"_s)));
        data::DatabaseAddress server = data::DatabaseAddress::parse(u"server/3051:/srv/ditta.fdb"_s);
        server.password = u"segreta"_s;
        errorOfBackup(server, path(u"copia.fbk"_s));
        const QByteArray out = test::contentOf(path(u"out"_s));
        QVERIFY2(out.startsWith("-b -v server/3051:/srv/ditta.fdb /") && out.endsWith("copia.fbk SYSDBA\n1\n"), out);
    }

    void tenDailyBackupsAreKept()
    {
        const QString folder = path(u"backup"_s);
        QDir().mkpath(folder);
        const QDate today(2026, 3, 16);
        for (int days = 1; days <= 11; ++days)
            core::saveFile(host::dailyBackupFile(folder, database_, today.addDays(-days)), "old");
        for (const char *other : {"ditta è-2-2020-01-01.fbk", "ditta è.fbk", "altra-2020-01-01.fbk"})
            core::saveFile(folder + u'/' + QString::fromUtf8(other), "other");
        QVERIFY(host::dailyBackupDue(folder, database_, today));
        core::Progress progress;
        host::runDailyBackup(folder, database_, today, progress);
        QVERIFY(!host::dailyBackupDue(folder, database_, today));
        for (const int day : {6, 7, 16})
            QCOMPARE(QFile::exists(folder + u"/ditta è-2026-03-%1.fbk"_s.arg(day, 2, 10, QChar(u'0'))), day > 6);
        QCOMPARE(QDir(folder).entryList(QDir::Files).size(), 13);

        // The same name elsewhere is another database.
        QVERIFY(host::dailyBackupDue(folder, test::fileAddress(path(u"altrove/ditta è.fdb"_s)), today));
        QVERIFY(!host::dailyBackupDue(folder, data::DatabaseAddress::parse(u"server:/x.fdb"_s), today));
    }

    void serverDatabaseIsSavedAndRestoredBesideTheOld()
    {
        const test::FirebirdServer server;
        const QString backup = path(u"copia.fbk"_s);
        host::createHostDatabase(server.address(), true);
        const auto user = test::connectTo(server.address()); // others may work meanwhile
        QCOMPARE(errorOfBackup(server.address(), backup), u"no error"_s);

        QCOMPARE(errorOfRestore(backup, server.address()),
                 u"Sul server esiste già il database \"%1\": indicare un nome nuovo."_s.arg(server.address().file));
        const data::DatabaseAddress second = server.address(u"nuovo.fdb"_s);
        QCOMPARE(errorOfRestore(backup, second), u"no error"_s);
        QCOMPARE(firms(second), firms(server.address()));

        core::saveFile(backup, test::contentOf(backup).chopped(5000));
        const data::DatabaseAddress third = server.address(u"rotto.fdb"_s);
        QCOMPARE(errorOfRestore(backup, third),
                 u"Il file non è una copia di sicurezza, oppure è danneggiato o incompleto."_s);
        QVERIFY(!QFile::exists(third.file));

        data::DatabaseAddress stranger = server.address();
        stranger.password = u"x"_s;
        QCOMPARE(errorOfBackup(stranger, backup), u"Il server ha rifiutato il nome utente o la password."_s);
    }

private:
    QString path(const QString &name) const { return folder_->filePath(name); }
    /// Everything in the folder, hidden files included.
    QStringList files() const { return test::filesIn(folder_->path()); }

    QString errorOfBackup(const data::DatabaseAddress &database, const QString &file)
    {
        return test::errorOf([&] {
            core::Progress progress;
            host::backupDatabase(database, file, progress);
        });
    }

    QString errorOfRestore(const QString &file, const data::DatabaseAddress &target)
    {
        return test::errorOf([&] {
            core::Progress progress;
            host::restoreDatabase(file, target, progress);
        });
    }

    std::unique_ptr<QTemporaryDir> folder_;
    data::DatabaseAddress database_;
    QByteArray searchPath_;
};

static const test::Registered<TestBackup> registered;

#include "test_backup.moc"
