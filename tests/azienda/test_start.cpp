#include "host/start/Keyring.h"
#include "host/start/StartDialogs.h"
#include "host/start/Startup.h"
#include "host/ui/MainWindow.h"
#include "host/users/Users.h"
#include "platform/ui/NumberEdits.h"
#include "tests/support/Kit.h"
#include "tests/support/Workplace.h"

namespace {

data::DatabaseAddress serverDatabase(const QString &host, const QString &password)
{
    data::DatabaseAddress address = data::DatabaseAddress::parse(host + u"/3050:/srv/firebird/azienda.fdb"_s);
    address.user = u"CORVANE"_s;
    address.password = password;
    return address;
}

/// Names of the program's windows in the order in which they were painted first.
class FirstPaints : public QObject
{
public:
    FirstPaints() { qApp->installEventFilter(this); }

    const QStringList &names() const { return names_; }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *widget = qobject_cast<QWidget *>(watched);
        if (event->type() == QEvent::Paint && widget && widget->isWindow() && !names_.contains(widget->objectName()))
            names_.append(widget->objectName());
        return false;
    }

private:
    QStringList names_;
};

// Its exit code and what it told.
std::pair<int, QByteArray> runProgram(const QString &home, const QStringList &arguments)
{
    test::Program program(home, arguments);
    const int code = program.exitCode();
    return {code, program.told()};
}

enum class Keeps
{
    Nothing,
    SomethingElse,
    All
};

/// A keyring without a desktop.
class FakeKeyring : public host::Keyring
{
public:
    explicit FakeKeyring(Keeps keeps)
        : keeps_(keeps)
    {
    }

    std::optional<QString> read(const QString &name) override
    {
        return secrets.contains(name) && !silent ? std::optional(secrets[name]) : std::nullopt;
    }
    void write(const QString &name, const QString &secret) override
    {
        if (keeps_ != Keeps::Nothing && !silent)
            secrets[name] = keeps_ == Keeps::All ? secret : u"?"_s;
    }
    bool remove(const QString &name) override
    {
        if (!silent)
            secrets.remove(name);
        return !silent;
    }

    bool silent = false;
    QMap<QString, QString> secrets;

private:
    Keeps keeps_;
};

} // namespace

class TestStart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void databasesAreRememberedLatestFirst()
    {
        const QTemporaryDir folder;
        host::DatabaseMemory memory(folder.path());
        QVERIFY(!memory.last());
        for (int i = 0; i < 10; ++i)
            memory.remember(test::fileAddress(u"/dati/città, %1.fdb"_s.arg(i)), false);
        const data::DatabaseAddress again = test::fileAddress(u"/dati/città, 5.fdb"_s);
        memory.remember(again, false);
        const host::DatabaseMemory later(folder.path());
        QCOMPARE(later.last()->file, again.file);
        QStringList files;
        for (const data::DatabaseAddress &address : later.recent())
            files.append(address.file.section(u' ', 1).left(1));
        QCOMPARE(files.join(QString()), u"59876432"_s);
    }

    void serverPasswordsAreTheOwnersAlone()
    {
        const QTemporaryDir folder;
        host::DatabaseMemory memory(folder.path());
        const QString secret = u"Segr%eta;1=\"è"_s;
        memory.remember(serverDatabase(u"server1"_s, secret), true);
        memory.remember(serverDatabase(u"server2"_s, u"NonTenuta1"_s), false);
        const host::DatabaseMemory later(folder.path());
        QCOMPARE(later.withPassword(later.recent()[1]).password, secret);
        QCOMPARE(later.recent()[1].user, u"CORVANE"_s);
        QCOMPARE(later.recent()[1].host, u"server1"_s);
        QCOMPARE(later.last()->password, QString());
        const QString file = folder.filePath(u"accessi.ini"_s);
        const auto others =
            QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther | QFileDevice::WriteOther;
        QVERIFY(!(QFileInfo(file).permissions() & others));
        QVERIFY(!test::contentOf(file).contains("NonTenuta1"));
        QVERIFY(!test::contentOf(memory.settingsFile()).contains("Segr"));
        // Opened again without keeping it: forgotten.
        memory.remember(serverDatabase(u"server1"_s, secret), false);
        QVERIFY(!memory.keepsPassword(serverDatabase(u"server1"_s, {})));
        QVERIFY(!test::contentOf(file).contains("Segr"));
    }

    void passwordsMoveToTheKeyring()
    {
        const auto back = qScopeGuard([] { host::setKeyring({}); });
        const QTemporaryDir folder;
        const data::DatabaseAddress server = serverDatabase(u"server1"_s, u"Segreta1"_s);
        const auto inFile = [&folder] {
            return test::contentOf(folder.filePath(u"accessi.ini"_s)).contains("Segreta1");
        };
        // Kept in the file before there was a keyring, and as long as it does not answer with what it was given.
        for (const Keeps keeps : {Keeps::Nothing, Keeps::SomethingElse}) {
            host::setKeyring(std::make_unique<FakeKeyring>(keeps));
            host::DatabaseMemory(folder.path()).remember(server, true);
            QVERIFY(inFile());
            QCOMPARE(host::DatabaseMemory(folder.path()).last()->password, server.password);
        }
        auto made = std::make_unique<FakeKeyring>(Keeps::All);
        const FakeKeyring &desktop = *made;
        host::setKeyring(std::move(made));
        host::DatabaseMemory memory(folder.path());
        memory.remember(*memory.last(), true);
        QVERIFY(!inFile() && memory.keepsPassword(server));
        QCOMPARE(desktop.secrets, (QMap<QString, QString>{{u"CORVANE@"_s + server.toString(), server.password}}));
        QCOMPARE(memory.last()->password, server.password);
        // One that does not answer any more costs a question, and the next login takes the file.
        host::setKeyring(std::make_unique<FakeKeyring>(Keeps::Nothing));
        QCOMPARE(memory.last()->password, QString());
        memory.remember(server, true);
        QVERIFY(inFile());
        // Not kept any more, or no longer in the list: forgotten on both sides.
        made = std::make_unique<FakeKeyring>(Keeps::All);
        FakeKeyring &later = *made;
        host::setKeyring(std::move(made));
        for (const bool keep : {true, false}) {
            memory.remember(server, keep);
            QCOMPARE(later.secrets.size(), keep ? 1 : 0);
        }
        memory.remember(server, true);
        for (int i = 0; i < 8; ++i)
            memory.remember(test::fileAddress(u"/dati/%1.fdb"_s.arg(i)), false);
        QVERIFY(later.secrets.isEmpty() && !memory.keepsPassword(server));
        // One that was locked holds what went into the file later; locked again, it forgets as soon as it answers.
        for (const bool lockedThen : {false, true}) {
            later.silent = false;
            memory.remember(server, true);
            later.silent = true;
            memory.remember(server, true);
            QVERIFY(inFile());
            later.silent = lockedThen;
            memory.remember(server, false);
            QVERIFY(!inFile() && !memory.keepsPassword(server));
            QCOMPARE(later.secrets.size(), lockedThen ? 1 : 0);
        }
        later.silent = false;
        memory.remember(test::fileAddress(u"/dati/1.fdb"_s), false);
        QVERIFY(later.secrets.isEmpty());
    }

    void newFirmOnAServer()
    {
        const test::FirebirdServer server;
        host::NewFirm firm;
        firm.database = server.address(u"azienda.fdb"_s);
        firm.name = QString(101, u'x');
        firm.userName = u"LUCIA"_s;
        firm.password = u"segreta1"_s;
        QVERIFY_EXCEPTION_THROWN(host::createFirm(firm), data::DatabaseError);
        // The failed one is gone, so the same name is free.
        firm.name = u"Rossi"_s;
        host::createFirm(firm);
        QCOMPARE(host::authenticate(u"lucia"_s, u"segreta1"_s, *test::connectTo(firm.database)), u"LUCIA"_s);
    }

    void onlyADatabaseThatOpensIsAccepted()
    {
        const test::TestDatabase database(test::Content::HostSchema);
        test::ScriptedMessages messages;
        test::ScriptedDialogs dialogs;
        messages.expectWarning(u"Il database \"/nessuno.fdb\" non esiste."_s);
        messages.expectWarning(u"Non è stato indicato il server!"_s);
        messages.expectWarning(
            u"Il server \"127.0.0.1\" non è raggiungibile. Verificare che sia acceso e collegato alla rete."_s);
        dialogs.expect([&database](QDialog &dialog) {
            auto *file = test::control<QLineEdit>(&dialog, u"txtFile"_s);
            file->setText(u"/nessuno.fdb"_s);
            test::press(&dialog, u"cmdOk"_s);
            test::control<QRadioButton>(&dialog, u"optServer"_s)->setChecked(true);
            test::press(&dialog, u"cmdOk"_s);
            test::control<QLineEdit>(&dialog, u"txtServer"_s)->setText(u"127.0.0.1"_s);
            test::control<ui::IntegerEdit>(&dialog, u"txtPorta"_s)->setValue(1);
            test::control<QLineEdit>(&dialog, u"txtFileServer"_s)->setText(u"/srv/a.fdb"_s);
            test::press(&dialog, u"cmdOk"_s);
            test::control<QRadioButton>(&dialog, u"optComputer"_s)->setChecked(true);
            file->setText(database.address().file);
            test::press(&dialog, u"cmdOk"_s);
        });
        const auto chosen = host::databaseToOpen(nullptr, QDir::homePath());
        QVERIFY(chosen);
        QCOMPARE(chosen->database.file, database.address().file);
    }

    // A new firm whose first login is given up; it is what the program opens at the next start, complete, and backs up
    // at the end.
    void sessionsFollowOneAnother()
    {
        const QTemporaryDir folder;
        test::ScriptedMessages messages;
        test::ScriptedDialogs dialogs;
        const auto press = [&dialogs](const QString &button) { dialogs.expect(test::pressing(button)); };
        press(u"cmdNuovaAzienda"_s);
        dialogs.expect([](QDialog &dialog) {
            for (const auto &[name, text] : {std::pair(u"txtRagioneSociale"_s, u"Rossi"_s),
                                             {u"txtNomeUtente"_s, u"lucia"_s},
                                             {u"txtPassword"_s, u"segreta1"_s},
                                             {u"txtRipeti"_s, u"segreta1"_s}})
                test::control<QLineEdit>(&dialog, name)->setText(text);
            test::press(&dialog, u"cmdOk"_s);
        });
        press(u"cmdAnnulla"_s);
        dialogs.expect([](QDialog &dialog) {
            QVERIFY(dialog.findChild<QAbstractButton *>(u"cmdRiprova"_s));
            dialog.reject();
        });
        host::runSessions({}, folder.path());
        QCOMPARE(dialogs.verify(), QStringList());
        QVERIFY(!QFileInfo::exists(folder.filePath(u"backup"_s)));

        QStringList seen;
        dialogs.expect(test::loggingIn(u"segreta1"_s, [&seen](host::MainWindow &window) {
            auto *connection = window.findChild<data::Connection *>();
            for (const QString &rows :
                 {u"RAGIONESOCIALE FROM AZIENDA"_s, u"FIRST 1 'tipi' FROM TIPI_TRASPORTO"_s,
                  u"CATEGORIA FROM CATEGORIE_ANA_MAGA"_s,
                  u"CAUSALE_TRASPORTO FROM CAUSALI_TRASPORTO WHERE CAUSALE_TRASPORTO = 'Acquisto'"_s,
                  u"OPZIONE FROM OPZIONI WHERE OPZIONE = 'PRIME_RIGHE'"_s})
                seen += test::linesOf(*connection, u"SELECT "_s + rows);
            window.findChild<QAction *>(u"actNuovaAzienda"_s)->trigger();
            window.close();
        }));
        press(u"cmdAnnulla"_s);
        dialogs.expect([](QDialog &dialog) { QTRY_VERIFY_WITH_TIMEOUT(!dialog.isVisible(), 60'000); });
        host::runSessions({}, folder.path());
        QCOMPARE(seen, QStringList({u"Rossi"_s, u"tipi"_s, u"Generale"_s, u"Acquisto"_s}));
        QCOMPARE(QDir(folder.filePath(u"backup"_s)).entryList({u"rossi-*.fbk"_s}).size(), 1);
    }

    void firstWindowStandsBeforeAnythingWaits()
    {
        const QTemporaryDir folder;
        const test::TestDatabase database(test::Content::HostSchema);
        QVERIFY(QFile::copy(database.address().file, folder.filePath(u"corvane.fdb"_s)));
        const FirstPaints painted;
        test::ScriptedDialogs dialogs;
        dialogs.expect(test::pressing(u"cmdAnnulla"_s));
        dialogs.expect([](QDialog &dialog) { dialog.reject(); });
        host::runSessions({}, folder.path());
        QCOMPARE(painted.names().value(0), u"frmAttesa"_s);
    }

    // A wrong number of tool bars made Qt count for hours.
    void damagedWindowStateIsForgotten()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(u"corvane.ini"_s);
        const QSize size(911, 622);
        {
            host::MainWindow window(file);
            window.resize(size);
            window.close();
        }
        QCOMPARE(host::MainWindow(file).size(), size);
        const QSize first = host::MainWindow(folder.filePath(u"nuovo.ini"_s)).size();
        QVERIFY(first != size);
        const QString key = u"finestra/barre"_s;
        const QByteArray bars = QSettings(file, QSettings::IniFormat).value(key).toByteArray();
        for (qsizetype place = 32; place < 64; ++place) {
            QByteArray damaged = bars;
            damaged[place] = static_cast<char>(damaged[place] ^ 0x7F);
            QSettings(file, QSettings::IniFormat).setValue(key, damaged);
            QCOMPARE(host::MainWindow(file).size(), first);
        }
    }

    void programKeepsItsFilesToItself()
    {
        const QTemporaryDir home;
        const QDir data(home.filePath(u"corvane"_s));
        QVERIFY(data.mkpath(u"."_s));
        core::saveFile(data.filePath(u"corvane.log"_s), {});
        for (const QString &old : {data.path(), data.filePath(u"corvane.log"_s)})
            QFile::setPermissions(old, QFile::Permissions(0x7755));
        QCOMPARE(runProgram(home.path(), {u"--upgrade"_s}).first, 0);
        constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                                QFile::WriteOther | QFile::ExeOther;
        for (const QString &own : {u"."_s, u"corvane.log"_s, u"corvane.fdb"_s}) {
            QVERIFY2(data.exists(own), qPrintable(own));
            QVERIFY2(!(QFileInfo(data.filePath(own)).permissions() & others), qPrintable(own));
        }
    }

    void withoutADisplayItUpgradesOnly()
    {
        const QTemporaryDir home;
        const QStringList database = {u"--database"_s, home.filePath(u"azienda.fdb"_s), u"--empty"_s};
        QCOMPARE(runProgram(home.path(), database + QStringList(u"--upgrade"_s)).first, 0);
        const auto [code, told] = runProgram(home.path(), database);
        QVERIFY2(told.contains("Nessuno schermo disponibile"), told.constData());
        QCOMPARE(code, 1);
    }

    void commandLineUpgradesHostAndModule()
    {
        const QTemporaryDir home;
        const test::TestDatabase database(test::Content::Empty);
        const QString file = home.filePath(u"ditta.fdb"_s);
        QVERIFY(QFile::copy(database.address().file, file));
        const auto connection = test::connectTo(test::fileAddress(file));
        test::createFirstRelease(*connection);
        const QString version = u"UPDATE TABLE_VERSION SET VERSIONE = '%1' WHERE TABELLA = '%2'"_s;
        connection->execute(version.arg(u"1.3.0"_s, u"FATT_ACC"_s));
        connection->close();
        const QStringList command = {u"--database"_s, file, u"--upgrade"_s};
        QCOMPARE(runProgram(home.path(), command).first, 0);
        // What is up to date is not copied again.
        QCOMPARE(runProgram(home.path(), command).first, 0);
        const QStringList copies = QDir(home.path()).entryList({u"ditta.prima-dell-aggiornamento-*.fdb"_s});
        QCOMPARE(copies.size(), 1);
        const QString versions =
            u"SELECT VERSIONE FROM TABLE_VERSION WHERE TABELLA IN ('CORVANE', 'FATT_ACC') ORDER BY TABELLA"_s;
        connection->open();
        QCOMPARE(test::linesOf(*connection, versions), QStringList({u"1.5.0"_s, u"1.4.0"_s}));
        connection->execute(version.arg(u"9.0.0"_s, u"CORVANE"_s));
        connection->close();
        const auto [code, told] = runProgram(home.path(), command);
        QVERIFY2(told.contains("una versione più recente del programma"), told.constData());
        QCOMPARE(code, 1);

        const auto copy = test::connectTo(test::fileAddress(home.filePath(copies.first())));
        QCOMPARE(test::linesOf(*copy, versions), QStringList({u"1.0.0"_s, u"1.3.0"_s}));
    }

    void missingModuleIsReported()
    {
        const QTemporaryDir home;
        const QDir folder(home.filePath(u"programma"_s));
        QVERIFY(folder.mkpath(u"."_s));
        QVERIFY(QFile::copy(QCoreApplication::applicationDirPath() + u"/corvane"_s, folder.filePath(u"corvane"_s)));
        test::Program program(home.path(),
                              {u"--database"_s, home.filePath(u"ditta.fdb"_s), u"--empty"_s, u"--upgrade"_s}, {},
                              folder.path());
        QCOMPARE(program.exitCode(), 1);
        QCOMPARE(program.told().count("Il modulo \"Magazzino.bpl\" manca"), 1);
    }
};

static const test::Registered<TestStart> registered;
#include "test_start.moc"
