#include "host/schema/DemoData.h"
#include "host/schema/HostSchema.h"
#include "magazzino/MMGUtils.h"
#include "platform/data/DataSet.h"
#include "platform/data/DatabaseError.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/TestMain.h"

#include <QSet>

using namespace Qt::StringLiterals;

class TestHostSchema : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newDatabaseHoldsTheHostsRowsOnly();
    void rightsAreInsertedByPositionWithKeyZero();
    void codesAreUniqueWithoutCase_data();
    void codesAreUniqueWithoutCase();
    void vatNumberOfThirteenCharactersFitsACustomer();
    void demonstrationDataAreTheSameEveryTime();
    void demonstrationArticlesAreComplete();
    void demonstrationVatNumbersHaveTheirCheckDigit();
    void demonstrationUsersHaveDifferentRights();
    void warehouseDataWaitForTheirTables();
    void warehouseDataLeaveFilledTablesAlone();
};

void TestHostSchema::newDatabaseHoldsTheHostsRowsOnly()
{
    test::ModuleDatabase database(test::Content::HostSchema);
    QCOMPARE(database.lines(u"SELECT OPZIONE FROM OPZIONI ORDER BY 1"_s),
             QStringList({u"FATT_IVA_ESENTE_NOTE"_s, u"NUMERAZIONE_UNICA_FATTURE"_s}));
    QVERIFY(UserHasAbilitazione(u"qualsiasi"_s, u"Amministratore"_s, database.connection()));
    QCOMPARE(database.lines(u"SELECT TRIM(RDB$RELATION_NAME) FROM RDB$RELATIONS WHERE RDB$RELATION_NAME IN "
                            "('FORNITORI', 'VETTORI', 'MAGAZZINI', 'MOVI_MAGA', 'CAUSALI_MAGA')"_s),
             QStringList());
}

void TestHostSchema::rightsAreInsertedByPositionWithKeyZero()
{
    test::ModuleDatabase database(test::Content::HostSchema);
    for (const QString &right : {u"Prima"_s, u"Seconda"_s})
        database.connection().execute(u"INSERT INTO ABILITAZIONI_UTENTE VALUES(0, '%1', 'Modulo')"_s.arg(right));
    QCOMPARE(database.lines(u"SELECT * FROM ABILITAZIONI_UTENTE ORDER BY 1"_s),
             QStringList({u"1|Controllo completo|Corvane"_s, u"2|Prima|Modulo"_s, u"3|Seconda|Modulo"_s}));
}

void TestHostSchema::codesAreUniqueWithoutCase_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("column");
    QTest::newRow("articles") << u"ANA_MAGA"_s << u"CODICE"_s;
    QTest::newRow("services") << u"SERVIZI"_s << u"CODICE"_s;
    QTest::newRow("customers") << u"CLIENTI"_s << u"CODICE"_s;
    QTest::newRow("users") << u"UTENTI"_s << u"USER_NAME"_s;
}

void TestHostSchema::codesAreUniqueWithoutCase()
{
    QFETCH(QString, table);
    QFETCH(QString, column);
    test::ModuleDatabase database(test::Content::HostSchema);
    database.insert(table, {{column, u"Perù-1"_s}});
    QVERIFY_EXCEPTION_THROWN(database.insert(table, {{column, u"PERÙ-1"_s}}), data::DatabaseError);
    QCOMPARE(database.lines(u"SELECT %1 FROM %2 WHERE %1 = 'Perù-1'"_s.arg(column, table)),
             QStringList({u"Perù-1"_s})); // as typed
}

void TestHostSchema::vatNumberOfThirteenCharactersFitsACustomer()
{
    test::ModuleDatabase database(test::Content::HostSchema);
    database.insert(u"CLIENTI"_s, {{u"PARTITAIVA"_s, u"IT12345678901"_s}});
    QVERIFY_EXCEPTION_THROWN(
        database.insert(u"CLIENTI"_s, {{u"CODICE"_s, u"2"_s}, {u"PARTITAIVA"_s, u"IT123456789012"_s}}),
        data::DatabaseError);
}

namespace {

/// Every row of every table that the demonstration data fill, as text.
QStringList contents(test::ModuleDatabase &database)
{
    QStringList all;
    for (const QString &table :
         {u"ANA_MAGA"_s, u"CATEGORIE_ANA_MAGA"_s, u"SERVIZI"_s, u"CLIENTI"_s, u"FORNITORI"_s, u"VETTORI"_s, u"UM"_s,
          u"ALIQUOTE_IVA"_s, u"TIPI_PAGAMENTO"_s, u"TIPI_TRASPORTO"_s, u"CAUSALI_TRASPORTO"_s, u"NOTE_DOCUMENTI"_s,
          u"AZIENDA"_s, u"UTENTI_RUOLI"_s, u"ABILITAZIONI_RUOLI"_s}) {
        const QStringList rows = database.lines(u"SELECT * FROM %1 ORDER BY 1, 2"_s.arg(table));
        all.append(u"%1: %2"_s.arg(table).arg(rows.size()));
        all.append(rows);
    }
    return all;
}

void fill(test::ModuleDatabase &database)
{
    host::insertDemoMasterData(database.connection());
    host::insertDemoWarehouseData(database.connection());
}

} // namespace

void TestHostSchema::demonstrationDataAreTheSameEveryTime()
{
    QStringList first;
    {
        test::ModuleDatabase database;
        fill(database);
        first = contents(database);
    }
    test::ModuleDatabase database;
    fill(database);
    QCOMPARE(contents(database), first);
    QVERIFY(!first.filter(u": 0"_s).contains(u"FORNITORI: 0"_s));
    QVERIFY(first.contains(u"CLIENTI: 60"_s) && first.contains(u"FORNITORI: 15"_s) && first.contains(u"VETTORI: 6"_s));
}

void TestHostSchema::demonstrationArticlesAreComplete()
{
    test::ModuleDatabase database;
    fill(database);
    QCOMPARE(database.lines(u"SELECT CODICE FROM ANA_MAGA WHERE NOT (PREZZO > COSTO AND COSTO > 0 AND RIORDINO >= "
                            "SOTTOSCORTA) OR IDALIQUOTA_IVA IS NULL OR IDUM IS NULL OR IDCATEGORIA_ANA_MAGA IS NULL "
                            "OR DESCRIZIONE CONTAINING '%1'"_s),
             QStringList());
    QCOMPARE(database.lines(u"SELECT CODICE FROM SERVIZI WHERE NOT PREZZO > COSTO OR IDALIQUOTA_IVA IS NULL OR IDUM IS "
                            "NULL OR IDCATEGORIA_SERVIZI IS NULL"_s),
             QStringList());
    QCOMPARE(database
                 .lines(u"SELECT A.DESCRIZIONE FROM ANA_MAGA A JOIN CATEGORIE_ANA_MAGA C ON "
                        "C.IDCATEGORIA_ANA_MAGA = A.IDCATEGORIA_ANA_MAGA JOIN CATEGORIE_ANA_MAGA P ON "
                        "P.IDCATEGORIA_ANA_MAGA = C.IDPADRE JOIN CATEGORIE_ANA_MAGA R ON R.IDCATEGORIA_ANA_MAGA = "
                        "P.IDPADRE WHERE R.CATEGORIA = 'Ferramenta' AND A.CODICE = 'VIT-0420'"_s)
                 .size(),
             qsizetype(1));
}

void TestHostSchema::demonstrationVatNumbersHaveTheirCheckDigit()
{
    test::ModuleDatabase database;
    fill(database);
    const QStringList numbers = database.lines(u"SELECT PARTITAIVA FROM CLIENTI WHERE PARTITAIVA IS NOT NULL UNION ALL "
                                               "SELECT PARTITAIVA FROM FORNITORI UNION ALL SELECT PARTITAIVA FROM "
                                               "VETTORI UNION ALL SELECT PARTITAIVA FROM AZIENDA"_s);
    QCOMPARE(numbers.size(), qsizetype(59 + 15 + 6 + 1));
    QCOMPARE(QSet<QString>(numbers.begin(), numbers.end()).size(), numbers.size());
    for (const QString &number : numbers) {
        int sum = 0;
        for (int i = 0; i < 10; i += 2) {
            const int twice = 2 * number[i + 1].digitValue();
            sum += number[i].digitValue() + twice / 10 + twice % 10;
        }
        QVERIFY2(number.size() == 11 && (sum + number[10].digitValue()) % 10 == 0, qPrintable(number));
    }
}

void TestHostSchema::demonstrationUsersHaveDifferentRights()
{
    test::ModuleDatabase database;
    fill(database);
    const auto rights = [&database](const QString &user) {
        QString held;
        for (const QString &right : {u"visualizzazione"_s, u"modifica"_s, u"eliminazione"_s})
            held += UserHasAbilitazione(u"Fatture acc. (%1)"_s.arg(right), user, database.connection()) ? u'1' : u'0';
        return held;
    };
    QCOMPARE(rights(u"AMMINISTRATORE"_s), u"111"_s);
    QCOMPARE(rights(u"UFFICIO"_s), u"100"_s);
    QCOMPARE(rights(u"MAGAZZINIERE"_s), u"000"_s);
}

void TestHostSchema::warehouseDataWaitForTheirTables()
{
    test::ModuleDatabase database(test::Content::HostSchema);
    fill(database);
    QCOMPARE(database.lines(u"SELECT COUNT(*) FROM ABILITAZIONI_RUOLI"_s), QStringList({u"1"_s}));
}

void TestHostSchema::warehouseDataLeaveFilledTablesAlone()
{
    test::ModuleDatabase database;
    database.insert(u"FORNITORI"_s, {{u"CODICE"_s, u"MIO"_s}});
    fill(database);
    host::insertDemoWarehouseData(database.connection());
    QCOMPARE(database.lines(u"SELECT CODICE FROM FORNITORI"_s), QStringList({u"MIO"_s}));
    QCOMPARE(database.lines(u"SELECT COUNT(*) FROM VETTORI"_s), QStringList({u"6"_s}));
}

static const test::Registered<TestHostSchema> registered;
#include "test_host_schema.moc"
