#include "host/start/FileCommands.h"
#include "host/start/FirstRows.h"
#include "host/start/MoveDatabase.h"
#include "host/start/NewFirm.h"
#include "host/start/Opening.h"
#include "host/start/ServerSetup.h"
#include "host/start/Startup.h"
#include "platform/data/DatabaseFile.h"
#include "platform/ui/Draft.h"
#include "tests/support/Fixtures.h"

namespace {

/// While it lives, the disk loses pages of `file` before the engine's own program looks through it.
class DamagedAfterRestore
{
public:
    explicit DamagedAfterRestore(const QString &file)
    {
        const QString real = QStandardPaths::findExecutable(u"gfix"_s);
        QFile program(folder_.filePath(u"gfix"_s));
        QVERIFY(program.open(QIODevice::WriteOnly));
        program.write(
            u"#!/bin/sh\ndd if=/dev/zero of='%1' bs=8192 seek=200 count=40 conv=notrunc 2>&-\nexec '%2' \"$@\"\n"_s
                .arg(file, real)
                .toUtf8());
        program.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        qputenv("PATH", QFile::encodeName(folder_.path()) + ':' + path_);
    }
    ~DamagedAfterRestore() { qputenv("PATH", path_); }
    Q_DISABLE_COPY(DamagedAfterRestore)

private:
    QTemporaryDir folder_;
    QByteArray path_ = qgetenv("PATH");
};

/// While it lives, the firm of a server is moved into `file`.
class MovingHere
{
public:
    explicit MovingHere(const QString &file)
        : file_(file)
    {
        ui::setSaveFileChooser([file](QWidget *, const ui::SaveFileRequest &) { return file; });
    }
    ~MovingHere() { ui::setSaveFileChooser({}); }
    Q_DISABLE_COPY(MovingHere)

    const QString &file() const { return file_; }

private:
    QString file_;
};

} // namespace

/// From one workstation to several: a server is found and prepared, a firm moves there and back.
class TestMoreWorkstations : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void init() override
    {
        firm_ = std::make_unique<test::TestDatabase>(test::Content::DemoData);
        setPlace(std::make_unique<test::Workplace>(firm_->address()));
    }

    // As a user does it: the first password of the administrator is wrong, then the user is there for good.
    void firmMovesToAServerAndBack()
    {
        const test::FirebirdServer server;
        const data::DatabaseAddress administrator = server.address();
        const QTemporaryDir folder;
        host::DatabaseMemory memory(folder.path());
        const data::DatabaseAddress here = firm_->address();
        const QMap<QString, int> rows = host::tableRows(here);
        {
            const host::FileCommands file(place().window(), {.database = here}, memory, folder.path());
            QString written;
            place().dialogs.expect([&](QDialog &dialog) {
                test::press(&dialog, u"cmdCercaServer"_s);
                QVERIFY(test::shown(&dialog, u"lblRisposta"_s).startsWith(u"Indicare"_s));
                test::retype(&dialog, u"txtServer"_s, administrator.host);
                test::retype(&dialog, u"txtPorta"_s, QString::number(administrator.port));
                test::press(&dialog, u"cmdCercaServer"_s);
                QCOMPARE(test::shown(&dialog, u"lblRisposta"_s), u"Un server Firebird risponde."_s);
                QVERIFY(test::shown(&dialog, u"lblFirewall"_s)
                            .contains(u"from 127.0.0.0/24 to any port %1 "_s.arg(administrator.port)));
                // Its paragraphs stay whole, however small it is made.
                dialog.resize(1, 1);
                const auto *advice = test::control<QLabel>(&dialog, u"lblFirewall"_s);
                QVERIFY(advice->height() >= advice->heightForWidth(advice->width()));
                test::retype(&dialog, u"txtFileServer"_s, server.folder() + u"/azienda.fdb"_s);
                written = test::control<QLineEdit>(&dialog, u"txtPasswordServer"_s)->text();
                place().messages.expectPart(u"Attenzione"_s, u"la password di SYSDBA"_s);
                test::press(&dialog, u"cmdOk"_s);
                for (const QString &password : {u"sbagliata"_s, administrator.password}) {
                    if (password != administrator.password)
                        place().messages.expectPart(u"Errore"_s, u"ha rifiutato la password"_s);
                    test::retype(&dialog, u"txtPasswordAmministratore"_s, password);
                    test::press(&dialog, u"cmdOk"_s);
                }
                place().messages.expectPart(u"Informazioni"_s, u"fatta e verificata"_s);
            });
            place().dialogs.expect(test::waiting());
            test::trigger(&file, u"actPiuPostazioni"_s);
            QCOMPARE((place().messages.verify() + place().dialogs.verify()).join(u'\n'), QString());
            const host::Opening next = place().window().nextDatabase().value();
            QVERIFY(next.isMove && next.keepPassword);
            QCOMPARE(next.database.user, u"CORVANE"_s);
            QCOMPARE(next.database.password, written);
            moved_ = next;
        }
        QVERIFY(!QDir(server.folder()).entryList().join(u' ').contains(u"preparazione"_s));
        // Nobody else's password is changed, and the user who is there is found.
        data::DatabaseAddress other = moved_.database;
        other.password = u"un'altra"_s;
        QVERIFY(test::errorOf([&] {
                    host::prepareServer(other, administrator.password);
                }).contains(u"con un'altra password"_s));
        QVERIFY(host::knowsUser(moved_.database) && !host::knowsUser(other));
        QVERIFY(!host::serverAnswers(administrator.host, 1));

        setPlace({});
        test::ScriptedMessages messages;
        test::ScriptedDialogs dialogs;
        const auto move = [&](const data::DatabaseAddress &from, const data::DatabaseAddress &to) {
            dialogs.expect(test::waiting());
            return host::finishMove(nullptr, moved_.restoreFrom, from, to);
        };
        messages.expectPart(u"Informazioni"_s, u"verificato, tabella per tabella"_s);
        QVERIFY(move(here, moved_.database));
        const auto there = test::connectTo(moved_.database);
        QCOMPARE(test::linesOf(*there, u"SELECT TRIM(MON$OWNER) FROM MON$DATABASE"_s), QStringList(u"CORVANE"_s));
        QCOMPARE(host::tableRows(moved_.database), rows);

        // Back, after somebody has worked on it between backup and restore: refused, and the new file is gone.
        data::DatabaseAddress back = test::fileAddress(folder.filePath(u"ritorno.fdb"_s));
        core::Progress progress;
        host::backupDatabase(moved_.database, moved_.restoreFrom, progress);
        there->execute(u"INSERT INTO UM(UM) VALUES('XX')"_s);
        messages.expectPart(u"Errore"_s, u"tabelle: UM"_s);
        QVERIFY(!move(moved_.database, back) && !QFileInfo::exists(back.file));
        host::backupDatabase(moved_.database, moved_.restoreFrom, progress);
        {
            const DamagedAfterRestore damaged(back.file);
            messages.expectPart(u"Errore"_s, u"non ha superato la verifica"_s);
            QVERIFY(!move(moved_.database, back) && !QFileInfo::exists(back.file));
        }
        messages.expectPart(u"Informazioni"_s, u"verificato"_s);
        QVERIFY(move(moved_.database, back));
        const auto different = [&] { return host::differingTables(moved_.database, back, progress).join(u' '); };
        QCOMPARE(different(), QString());
        // As many rows on both sides, and yet not the same.
        const auto rename = [&](const QString &name, const QString &as) {
            there->execute(u"UPDATE VETTORI SET RAGIONESOCIALE = '%2' WHERE RAGIONESOCIALE = '%1'"_s.arg(name, as));
        };
        const QStringList names = test::linesOf(*there, u"SELECT FIRST 2 RAGIONESOCIALE FROM VETTORI"_s);
        rename(names[0], u"-"_s);
        QCOMPARE(different(), u"VETTORI"_s);
        rename(names[1], names[0]);
        rename(u"-"_s, names[1]);
        QCOMPARE(different(), u"VETTORI"_s);
        there->execute(u"UPDATE AZIENDA SET LOGO = 'x'"_s);
        test::linesOf(*there, u"SELECT GEN_ID(GN_PROGRESSIVO_FATT_EL, 1) FROM RDB$DATABASE"_s);
        QCOMPARE(different(), u"AZIENDA VETTORI numeratori"_s);
    }

    // What is saved while the forms close is in what moves; as long as one stays open nothing moves.
    void formsCloseBeforeTheBackup()
    {
        setPlace({});
        const test::FirebirdServer server;
        const QTemporaryDir folder;
        host::createHostDatabase(server.address(), true);
        setPlace(std::make_unique<test::Workplace>(server.address()));
        host::insertDemoModuleData(place().database());
        host::DatabaseMemory memory(folder.path());
        const host::FileCommands file(place().window(), {.database = server.address()}, memory, folder.path());
        const MovingHere here(folder.filePath(u"qui.fdb"_s));
        const test::Document note(place(), test::deliveryNote());
        note.fillAll();
        const auto move = [&](core::Answer answer) {
            place().messages.expectPart(u"Conferma"_s, u"Riportarlo su questo computer"_s, core::Answer::Yes);
            place().messages.expectQuestion(test::saveFirst, answer);
            if (answer == core::Answer::Yes) {
                place().dialogs.expect(test::waiting());
                place().messages.expectPart(u"Informazioni"_s, u"fatta e verificata"_s);
            }
            test::trigger(&file, u"actPiuPostazioni"_s);
        };
        move(core::Answer::Cancel);
        QVERIFY(!place().window().nextDatabase() && !QFileInfo::exists(folder.filePath(u"backup"_s)));
        move(core::Answer::Yes);
        core::Progress progress;
        const data::DatabaseAddress moved = test::fileAddress(here.file());
        host::restoreDatabase(place().window().nextDatabase().value().restoreFrom, moved, progress);
        QCOMPARE(test::linesOf(moved, u"SELECT COUNT(*) FROM DDT_SCARICO"_s), QStringList(u"1"_s));
    }

    // Refused, the firm stays where it was and the password is not kept. Moved, it is what opens next, whatever becomes
    // of the login, and is not moved again.
    void whatWasMovedOpensNext()
    {
        setPlace({});
        const test::FirebirdServer server;
        const QTemporaryDir folder;
        host::NewFirm firm{.database = server.address(), .name = u"Rossi"_s};
        firm.userName = u"LUCIA"_s;
        firm.password = u"segreta1"_s;
        host::createFirm(firm);
        host::DatabaseMemory memory(folder.path());
        memory.remember(firm.database, false);
        memory.rememberUser(firm.userName);
        const MovingHere here(folder.filePath(u"qui.fdb"_s));
        const QString draft = folder.filePath(u"bozze/sessione-1/1.bozza"_s);
        QVERIFY(QDir(folder.path()).mkpath(u"bozze/sessione-1"_s));
        core::saveFile(draft, ui::packed({.database = firm.database.toString(), .user = u"ALTRO"_s}));

        test::ScriptedMessages messages;
        test::ScriptedDialogs dialogs;
        const auto expectMove = [&] {
            dialogs.expect([&server](QDialog &dialog) {
                test::type(test::control<QLineEdit>(&dialog, u"txtTesto"_s), server.address().password);
                test::press(&dialog, u"cmdOk"_s);
            });
            dialogs.expect(test::loggingIn(firm.password, [](host::MainWindow &window) {
                window.findChild<QAction *>(u"actPiuPostazioni"_s)->trigger();
            }));
            dialogs.expect(test::waiting());
            dialogs.expect(test::waiting());
            messages.expectPart(u"Conferma"_s, u"Riportarlo su questo computer"_s, core::Answer::Yes);
            messages.expectPart(u"Informazioni"_s, u"fatta e verificata"_s);
        };
        expectMove();
        messages.whileShown([&] { test::connectTo(firm.database)->execute(u"UPDATE AZIENDA SET CITTA = 'Roma'"_s); });
        messages.expectPart(u"Errore"_s, u"tabelle: AZIENDA)"_s);
        dialogs.expect(test::loggingIn(firm.password, [](host::MainWindow &window) { window.close(); }));
        host::runSessions({}, folder.path());
        QCOMPARE(memory.last()->toString(), firm.database.toString());
        QVERIFY(!memory.keepsPassword(firm.database) && !QFileInfo::exists(here.file()));

        expectMove();
        messages.expectPart(u"Informazioni"_s, u"è stato spostato"_s);
        messages.whileShown([&] {
            test::connectTo(test::fileAddress(here.file()))
                ->execute(u"UPDATE TABLE_VERSION SET VERSIONE = '9.0.0' WHERE TABELLA = 'CORVANE'"_s);
        });
        for (const QString &button : {u"cmdRiprova"_s, QString()}) {
            messages.expectPart(u"Errore"_s, u"una versione più recente"_s);
            dialogs.expect([button](QDialog &dialog) {
                if (button.isEmpty())
                    dialog.reject();
                else
                    test::press(&dialog, button);
            });
        }
        host::runSessions({}, folder.path());
        QCOMPARE(memory.last()->file, here.file());
        QCOMPARE(ui::unpacked(test::contentOf(draft)).database, here.file());
    }

    // Esc as soon as there is a database, and in the middle of its tables: the firm stays as it is, nothing half-made
    // beside it, and the next try goes through.
    void movingCanBeGivenUp()
    {
        const test::FirebirdServer server;
        const QTemporaryDir folder;
        data::DatabaseAddress there = server.address(u"azienda.fdb"_s);
        there.user = u"CORVANE"_s;
        there.password = u"Corvane1"_s;
        host::prepareServer(there, server.address().password);
        setPlace({});
        const QString backup = folder.filePath(u"copia.fbk"_s);
        core::Progress progress;
        host::backupDatabase(firm_->address(), backup, progress);
        const QMap<QString, int> rows = host::tableRows(firm_->address());
        test::ScriptedMessages messages;
        test::ScriptedDialogs dialogs;
        const auto move = [&](const data::DatabaseAddress &from, const data::DatabaseAddress &to) {
            const QDir target = QFileInfo(to.file).dir();
            const QStringList before = target.entryList(QDir::AllEntries | QDir::Hidden);
            const auto begun = [&to](const QDialog &) { return to.isEmbedded() || QFileInfo::exists(to.file); };
            const auto restoring = [](const QDialog &dialog) {
                return test::shown(&dialog, u"lblAvanzamento"_s).startsWith(u"Ripristino"_s);
            };
            for (const auto &use : {givingUpWhen(begun), givingUpWhen(restoring)}) {
                dialogs.expect(use);
                QVERIFY(!host::finishMove(nullptr, backup, from, to));
                QCOMPARE(target.entryList(QDir::AllEntries | QDir::Hidden), before);
                QCOMPARE(data::checkDatabase(to).failure, data::OpenFailure::Missing);
                QCOMPARE(host::tableRows(from), rows);
            }
            dialogs.expect(test::waiting());
            messages.expectPart(u"Informazioni"_s, u"verificato, tabella per tabella"_s, core::Answer::Ok);
            QVERIFY(host::finishMove(nullptr, backup, from, to));
            QCOMPARE(host::tableRows(to), rows);
        };
        move(firm_->address(), there);
        move(there, test::fileAddress(folder.filePath(u"ritorno.fdb"_s)));
    }

private:
    static test::ScriptedDialogs::Use givingUpWhen(const std::function<bool(const QDialog &)> &reached)
    {
        return [reached](QDialog &dialog) {
            constexpr int patience = 60'000; // milliseconds
            QVERIFY(QTest::qWaitFor([&] { return reached(dialog); }, patience));
            QTest::keyClick(&dialog, Qt::Key_Escape);
            test::waiting()(dialog);
        };
    }

    std::unique_ptr<test::TestDatabase> firm_;
    host::Opening moved_;
};

static const test::Registered<TestMoreWorkstations> registered;

#include "test_more_workstations.moc"
