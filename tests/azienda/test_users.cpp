#include "host/start/FileCommands.h"
#include "host/users/Password.h"
#include "host/users/PasswordDialogs.h"
#include "host/users/UserForms.h"
#include "host/users/Users.h"
#include "platform/ui/RegisterDeletion.h"
#include "tests/support/Fixtures.h"

namespace {

const QString lastAdministrator = u"Almeno un utente attivo deve avere il diritto \"Controllo completo\":\n\rnessun "
                                  "altro potrebbe più gestire utenti e ruoli."_s;
const QString secondAdministrator = u"INSERT INTO UTENTI_RUOLI(USER_NAME, IDRUOLO_UTENTE) VALUES('UFFICIO', 1)"_s;

test::ScriptedDialogs::Use loggingIn(const QString &user, const QStringList &passwords)
{
    return [user, passwords](QDialog &dialog) {
        test::control<QComboBox>(&dialog, u"txtNomeUtente"_s)->setCurrentText(user);
        for (const QString &password : passwords) {
            test::control<QLineEdit>(&dialog, u"txtPassword"_s)->setText(password);
            test::press(&dialog, u"cmdOk"_s);
        }
    };
}

} // namespace

class TestUsers : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void passwordsAreSaltedAndChecked()
    {
        const QString first = host::passwordHash(u"Città-7"_s);
        QVERIFY(first != host::passwordHash(u"Città-7"_s));
        QVERIFY2(first.section(u'$', 1, 1).toInt() >= 200'000, qPrintable(first));
        // The accent as a character of its own, as another keyboard types it.
        QVERIFY(host::passwordMatches(u"Citta\u0300-7"_s, first));
        QVERIFY(!host::passwordMatches(u"Città-8"_s, first));
        for (const QString &damaged : {QString(), u"Città-7"_s, first.left(first.size() - 4), u"md5$1$AA==$AA=="_s})
            QVERIFY(!host::passwordMatches(u"Città-7"_s, damaged));
    }

    void loginRules()
    {
        // Demonstration users have no password: an empty one, and no other, lets them in.
        QCOMPARE(host::authenticate(u" ufficio "_s, {}, database()), u"UFFICIO"_s);
        QCOMPARE(host::authenticate(u"ufficio"_s, u"x"_s, database()), QString());
        host::setPassword(u"Ufficio"_s, u"di corsa"_s, database());
        QCOMPARE(host::authenticate(u"UFFICIO"_s, u"di corsa"_s, database()), u"UFFICIO"_s);
        QCOMPARE(host::authenticate(u"UFFICIO"_s, {}, database()), QString());
        QCOMPARE(host::authenticate(u"x' OR '1'='1"_s, {}, database()), QString());
        QCOMPARE(host::authenticate(QString(300, u'x'), {}, database()), QString());
        // A letter of which other capitals would make two.
        database().execute(u"UPDATE UTENTI SET USER_NAME = 'WEIß' WHERE USER_NAME = 'MAGAZZINIERE'"_s);
        host::setPassword(u"weiß"_s, u"a piedi"_s, database());
        QCOMPARE(host::authenticate(u"Weiß"_s, u"a piedi"_s, database()), u"WEIß"_s);
        QCOMPARE(host::authenticate(u"WEISS"_s, u"a piedi"_s, database()), QString());
        database().execute(u"UPDATE UTENTI SET ATTIVO = 'False' WHERE USER_NAME = 'UFFICIO'"_s);
        QCOMPARE(host::authenticate(u"UFFICIO"_s, u"di corsa"_s, database()), QString());
        QCOMPARE(host::activeUsers(database()), QStringList({u"AMMINISTRATORE"_s, u"WEIß"_s}));
    }

    void threeWrongPasswordsEnd()
    {
        host::setPassword(u"UFFICIO"_s, u"giusta"_s, database());
        const QString wrong = u"Nome utente o password non corretti."_s;
        place().messages.expectWarning(wrong);
        place().dialogs.expect(loggingIn(u"ufficio"_s, {u"sbagliata"_s, u"giusta"_s}));
        QCOMPARE(host::logIn(nullptr, u"UFFICIO"_s, database()).user, u"UFFICIO"_s);
        place().messages.expectWarning(wrong);
        place().messages.expectWarning(wrong);
        place().messages.expectWarning(
            u"Nome utente o password non corretti per tre volte:\n\ril programma viene chiuso."_s);
        place().dialogs.expect(loggingIn(u"UFFICIO"_s, {u"a"_s, u"b"_s, u"c"_s}));
        QVERIFY(host::logIn(nullptr, u"UFFICIO"_s, database()).lockedOut);
    }

    void ownPasswordIsChangedByWhoKnowsIt()
    {
        host::setPassword(host::administrator, u"vecchia-1"_s, database());
        place().messages.expectWarning(u"La password attuale non è corretta."_s);
        place().messages.expectInformation(u"La password è stata cambiata."_s);
        place().dialogs.expect([](QDialog &dialog) {
            for (const QString &old : {u"sbagliata"_s, u"vecchia-1"_s}) {
                test::retype(&dialog, u"txtVecchia"_s, old);
                for (const QString &name : {u"txtPassword"_s, u"txtRipeti"_s})
                    test::retype(&dialog, name, u"nuova-22"_s);
                test::press(&dialog, u"cmdOk"_s);
                QCOMPARE(dialog.isVisible(), old == u"sbagliata"_s);
            }
        });
        test::trigger(&place().commands(), u"actCambiaPassword"_s);
        QCOMPARE(host::authenticate(host::administrator, u"nuova-22"_s, database()), host::administrator);
        QCOMPARE(host::authenticate(host::administrator, u"vecchia-1"_s, database()), QString());
    }

    void newUserWorksWithRoleAndPassword()
    {
        QWidget *form = place().commands().openForm(u"actInserimentoUtenti"_s);
        test::control<QLineEdit>(form, u"txtNomeUtente"_s)->setText(u"d'angelo"_s);
        place().messages.expectWarning(u"Non è stata impostata la password!"_s);
        test::trigger(form, u"actSalva"_s);
        place().dialogs.expect([](QDialog &dialog) {
            for (const QString &name : {u"txtPassword"_s, u"txtRipeti"_s})
                test::control<QLineEdit>(&dialog, name)->setText(u"sei sei"_s);
            test::press(&dialog, u"cmdOk"_s);
        });
        test::press(form, u"cmdPassword"_s);
        test::control<QListWidget>(form, u"list"_s)->item(2)->setCheckState(Qt::Checked);
        test::trigger(form, u"actSalva"_s);
        QCOMPARE(host::authenticate(u"D'ANGELO"_s, u"sei sei"_s, database()), u"D'ANGELO"_s);
        QVERIFY(host::userHasRight(u"D'Angelo"_s, u"Fatture acc. (visualizzazione)"_s, database()));
        // Roles hang on the name and follow it.
        test::control<QLineEdit>(form, u"txtNomeUtente"_s)->setText(u"DANGELO"_s);
        test::trigger(form, u"actSalva"_s);
        QCOMPARE(lines(u"SELECT USER_NAME FROM UTENTI_RUOLI WHERE USER_NAME CONTAINING 'ANGELO'"_s),
                 QStringList(u"DANGELO"_s));
        QCOMPARE(host::authenticate(u"DANGELO"_s, u"sei sei"_s, database()), u"DANGELO"_s);
    }

    void lastAdministratorStays()
    {
        ui::EntryForm *user = openHostEntry(u"actInserimentoUtenti"_s);
        user->openRecord(1);
        QCOMPARE(test::shown(user, u"txtNomeUtente"_s), host::administrator);
        test::control<QCheckBox>(user, u"chkAttivo"_s)->setChecked(false);
        place().messages.expectWarning(lastAdministrator);
        test::trigger(user, u"actSalva"_s);
        ui::EntryForm *role = openHostEntry(u"actInserimentoRuoli"_s);
        role->openRecord(1);
        auto *rights = test::control<QListWidget>(role, u"list"_s);
        QCOMPARE(rights->item(1)->text(), u"Fatture acc. (visualizzazione) (Magazzino)"_s);
        rights->item(0)->setCheckState(Qt::Unchecked);
        place().messages.expectWarning(lastAdministrator);
        test::trigger(role, u"actSalva"_s);
        place().messages.expectWarning(u"Non è possibile eliminare l'utente che sta lavorando."_s);
        QVERIFY(!ui::deleteRegisterRecord(host::users(), 1, database(), nullptr));
        SetKxCurrentUserName(u"UFFICIO"_s);
        place().messages.expectWarning(lastAdministrator);
        QVERIFY(!ui::deleteRegisterRecord(host::users(), 1, database(), nullptr));
        SetKxCurrentUserName(host::administrator);
        // With a second administrator the first one may go, with its roles.
        database().execute(secondAdministrator);
        test::trigger(user, u"actSalva"_s);
        QCOMPARE(lines(u"SELECT ATTIVO FROM UTENTI WHERE IDUTENTE = 1"_s), QStringList(u"False"_s));
    }

    void adminCommandsNeedTheRight()
    {
        SetKxCurrentUserName(u"MAGAZZINIERE"_s);
        for (const QString &name :
             {u"actRicercaUtenti"_s, u"actInserimentoRuoli"_s, u"actAzienda"_s, u"actOpzioni"_s, u"actImporta"_s}) {
            place().messages.expectWarning(host::missingRight);
            QVERIFY(!place().commands().openForm(name));
        }
        QVERIFY(place().commands().openForm(u"actRicercaArticoli"_s));
        const QTemporaryDir folder;
        host::DatabaseMemory memory(folder.path());
        const host::FileCommands file(place().window(), {}, memory, folder.path());
        for (const QString &name : {u"actCopiaSicurezza"_s, u"actRipristina"_s}) {
            place().messages.expectWarning(host::missingRight);
            test::trigger(&file, name);
        }
    }

    // Another workstation takes the right away while the form is open.
    void rightIsAskedAgainAtTheSave()
    {
        database().execute(secondAdministrator);
        ui::EntryForm *user = openHostEntry(u"actInserimentoUtenti"_s);
        ui::EntryForm *role = openHostEntry(u"actInserimentoRuoli"_s);
        user->openRecord(2);
        role->openRecord(2);
        test::type(test::control<QLineEdit>(user, u"txtNome"_s), u"x"_s);
        test::type(test::control<QLineEdit>(role, u"txtRuolo"_s), u"x"_s);
        const QStringList before = lines(u"SELECT NOME FROM UTENTI"_s) + lines(u"SELECT RUOLO FROM RUOLI_UTENTE"_s);
        for (const QString &loss : {u"UPDATE UTENTI SET ATTIVO = 'False' WHERE IDUTENTE = 1"_s,
                                    u"DELETE FROM UTENTI_RUOLI WHERE USER_NAME = 'AMMINISTRATORE'"_s}) {
            database().execute(loss);
            for (const QWidget *form : {user, role}) {
                place().messages.expectWarning(host::missingRight);
                test::trigger(form, u"actSalva"_s);
            }
            place().messages.expectWarning(host::missingRight);
            QVERIFY(!ui::deleteRegisterRecord(host::users(), 2, database(), nullptr));
            database().execute(u"UPDATE UTENTI SET ATTIVO = 'True' WHERE IDUTENTE = 1"_s);
        }
        QCOMPARE(lines(u"SELECT NOME FROM UTENTI"_s) + lines(u"SELECT RUOLO FROM RUOLI_UTENTE"_s), before);
    }

    // Another workstation takes the right away between the form's own questions and the transaction of its save.
    void rightIsAskedInsideTheSave()
    {
        database().execute(secondAdministrator);
        data::Connection other(database().connectionString());
        const QString names = u"SELECT NOME FROM UTENTI UNION ALL SELECT RUOLO FROM RUOLI_UTENTE"_s;
        const QStringList before = lines(names);
        for (const auto &[command, field] :
             {std::pair(u"actInserimentoUtenti"_s, u"txtNome"_s), {u"actInserimentoRuoli"_s, u"txtRuolo"_s}}) {
            ui::EntryForm *form = openHostEntry(command);
            form->openRecord(2);
            test::type(test::control<QLineEdit>(form, field), u"x"_s);
            int losses = 0;
            database().setStatementHook([&](const QString &sql) {
                // The last administrator is what is asked about after the right.
                if (losses == 0 && !database().inTransaction() && sql.contains(u"COUNT(DISTINCT U.IDUTENTE)")) {
                    ++losses;
                    other.execute(u"UPDATE UTENTI SET ATTIVO = 'False' WHERE IDUTENTE = 1"_s);
                }
            });
            place().messages.expectError(host::missingRight);
            test::trigger(form, u"actSalva"_s);
            database().setStatementHook({});
            QCOMPARE(losses, 1);
            QVERIFY(form->Modified());
            QCOMPARE(lines(names), before);
            other.execute(u"UPDATE UTENTI SET ATTIVO = 'True' WHERE IDUTENTE = 1"_s);
        }
    }
};

static const test::Registered<TestUsers> registered;
#include "test_users.moc"
