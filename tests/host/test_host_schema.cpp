#include "host/schema/DemoData.h"
#include "host/start/FirstRows.h"
#include "tests/support/Kit.h"

namespace {

void fill(test::ModuleDatabase &database)
{
    host::insertDemoMasterData(database.connection());
    host::insertDemoModuleData(database.connection());
}

} // namespace

class TestHostSchema : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rightsAreInsertedByPositionWithKeyZero()
    {
        test::ModuleDatabase database(test::Content::HostSchema);
        for (const QString &right : {u"Prima"_s, u"Seconda"_s})
            database.connection().execute(u"INSERT INTO ABILITAZIONI_UTENTE VALUES(0, '%1', 'Modulo')"_s.arg(right));
        QCOMPARE(database.lines(u"SELECT * FROM ABILITAZIONI_UTENTE ORDER BY 1"_s),
                 QStringList({u"1|Controllo completo|Corvane"_s, u"2|Prima|Modulo"_s, u"3|Seconda|Modulo"_s}));
    }

    void demonstrationUsersHaveDifferentRights()
    {
        test::ModuleDatabase database;
        fill(database);
        const auto rights = [&database](const QString &user) {
            QString held;
            for (const QString &right : {u"visualizzazione"_s, u"modifica"_s, u"eliminazione"_s})
                held +=
                    UserHasAbilitazione(u"Fatture acc. (%1)"_s.arg(right), user, database.connection()) ? u'1' : u'0';
            return held;
        };
        QCOMPARE(rights(u"AMMINISTRATORE"_s), u"111"_s);
        QCOMPARE(rights(u"UFFICIO"_s), u"100"_s);
        QCOMPARE(rights(u"MAGAZZINIERE"_s), u"000"_s);
    }

    void warehouseDataLeaveFilledTablesAlone()
    {
        test::ModuleDatabase database;
        database.insert(u"FORNITORI"_s, {{u"CODICE"_s, u"MIO"_s}});
        fill(database);
        host::insertDemoModuleData(database.connection());
        QCOMPARE(database.lines(u"SELECT CODICE FROM FORNITORI"_s), QStringList(u"MIO"_s));
        QCOMPARE(database.lines(u"SELECT COUNT(*) FROM VETTORI"_s), QStringList(u"6"_s));
    }
};

static const test::Registered<TestHostSchema> registered;
#include "test_host_schema.moc"
