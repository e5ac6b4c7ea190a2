#include "tests/support/Kit.h"

class OpzioniTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<test::ModuleDatabase> db;

    void grant(const QString &user, const QString &right)
    {
        const int role = db->insert(u"RUOLI_UTENTE"_s, {{u"RUOLO"_s, u"Ruolo di "_s + user}});
        db->insert(u"UTENTI_RUOLI"_s, {{u"USER_NAME"_s, user}, {u"IDRUOLO_UTENTE"_s, role}});
        if (right.isEmpty())
            return;
        const int key = db->insert(u"ABILITAZIONI_UTENTE"_s, {{u"ABILITAZIONE_UTENTE"_s, right}});
        db->insert(u"ABILITAZIONI_RUOLI"_s, {{u"IDRUOLO_UTENTE"_s, role}, {u"IDABILITAZIONE_UTENTE"_s, key}});
    }

private Q_SLOTS:
    void init() { db = std::make_unique<test::ModuleDatabase>(); }
    void cleanup() { db.reset(); }

    void missingOptionIsNeitherReadNorCreated()
    {
        const QStringList before = db->lines(u"SELECT * FROM OPZIONI ORDER BY 1"_s);
        QVariant value = u"intatto"_s;
        QVERIFY(!GetOptionValue(u"MANCA"_s, value));
        QCOMPARE(value.toString(), u"intatto"_s);
        QVERIFY(!SetOptionValue(u"MANCA"_s, u"x"_s));
        QCOMPARE(db->lines(u"SELECT * FROM OPZIONI ORDER BY 1"_s), before);
    }

    void optionErrorsAreSwallowed()
    {
        QVERIFY(!SetOptionValue(u"FATT_IVA_ESENTE_NOTE"_s, QString(300, u'x')));
        db->connection().execute(u"DROP TABLE OPZIONI"_s);
        QVariant value = u"intatto"_s;
        QVERIFY(!GetOptionValue(u"FATT_IVA_ESENTE_NOTE"_s, value));
        QVERIFY(!SetOptionValue(u"FATT_IVA_ESENTE_NOTE"_s, u"x"_s));
        QCOMPARE(value.toString(), u"intatto"_s);
    }

    void flagIsStoredAsAWord()
    {
        for (const bool flag : {true, false}) {
            QVERIFY(SetOptionValue(u"NUMERAZIONE_UNICA_FATTURE"_s, flag));
            QVariant value;
            QVERIFY(GetOptionValue(u"NUMERAZIONE_UNICA_FATTURE"_s, value));
            QCOMPARE(value, QVariant(flag ? u"True"_s : u"False"_s));
            QCOMPARE(NumerazioneUnicaFattura(), flag);
        }
    }

    void rightsComeFromRolesOnly_data()
    {
        // granted: "-": no role at all; empty: a role without rights
        test::columns<QString, QString, QString, bool>("user", "granted", "asked", "expected");
        const QString right = u"Fatture acc. (modifica)"_s;
        QTest::newRow("granted") << u"ROSSI"_s << right << right << true;
        QTest::newRow("user in lower case") << u"rossi"_s << right << right << true;
        QTest::newRow("user with apostrophe") << u"D'Amico"_s << right << right << true;
        QTest::newRow("another right") << u"ROSSI"_s << u"Fatture acc. (eliminazione)"_s << right << false;
        QTest::newRow("trailing blank") << u"ROSSI"_s << u"Fatture acc. (modifica) "_s << right << false;
        QTest::newRow("full control") << u"ROSSI"_s << u"Controllo completo"_s << right << true;
        QTest::newRow("no role") << u"ROSSI"_s << u"-"_s << right << false;
        QTest::newRow("no right asked of such a role") << u"ROSSI"_s << QString() << QString() << false;
    }
    void rightsComeFromRolesOnly()
    {
        const auto [user, granted, asked] = test::row<QString, QString, QString>();
        if (granted != u"-"_s)
            grant(user.toUpper(), granted);
        QTEST(UserHasAbilitazione(asked, user, db->connection()), "expected");
    }
};

static const test::Registered<OpzioniTest> registered;

#include "test_opzioni.moc"
