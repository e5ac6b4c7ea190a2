#include "magazzino/MMGUtils.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;

namespace {

struct Numbering
{
    QString table;
    bool (*exists)(int, int, int);
    int (*next)(int);
};

const QList<Numbering> numberings = {{u"DDT_SCARICO"_s, DdTScaricoExists, GetNextNumeroDdTScarico},
                                     {u"BOLLE_CARICO"_s, BollaCaricoExists, GetNextNumeroBollaCarico},
                                     {u"FATT_ACC"_s, FattAccExists, GetNextNumeroFattAcc}};

} // namespace

class VerificheTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<test::ModuleDatabase> db;

    int document(const QString &table, int number, int year = 2026)
    {
        return db->insert(table, {{u"NUMERO"_s, number}, {u"ANNO"_s, year}});
    }

private Q_SLOTS:
    void init() { db = std::make_unique<test::ModuleDatabase>(); }
    void cleanup() { db.reset(); }

    void numbersArePerYearAndGapsStay()
    {
        for (const Numbering &kind : numberings) {
            QCOMPARE(kind.next(2026), 1);
            for (const int number : {1, 7, 2})
                document(kind.table, number);
            document(kind.table, 20, 2025);
            QCOMPARE(kind.next(2026), 8);
            QCOMPARE(kind.next(2025), 21);
        }
    }

    void ownNumberIsNoDuplicate()
    {
        for (const Numbering &kind : numberings) {
            const int key = document(kind.table, 5);
            QVERIFY(kind.exists(5, 2026, -1));
            QVERIFY(!kind.exists(5, 2026, key));
            QVERIFY(kind.exists(5, 2026, key + 1));
            QVERIFY(!kind.exists(5, 2025, -1));
            QVERIFY(!kind.exists(6, 2026, -1));
        }
    }

    void sharedNumberingCountsSalesInvoices_data()
    {
        QTest::addColumn<QString>("option");
        QTest::addColumn<int>("own");
        QTest::addColumn<int>("sales");
        QTest::addColumn<int>("expected");
        QTest::newRow("off") << u"False"_s << 9 << 12 << 10;
        QTest::newRow("on, sales higher") << u"True"_s << 9 << 12 << 13;
        QTest::newRow("on, own higher") << u"true"_s << 14 << 12 << 15;
        QTest::newRow("on, none") << u"True"_s << 0 << 0 << 1;
        QTest::newRow("no flag is off") << u"forse"_s << 9 << 12 << 10;
    }
    void sharedNumberingCountsSalesInvoices()
    {
        QFETCH(const QString, option);
        QFETCH(const int, own);
        QFETCH(const int, sales);
        QVERIFY(SetOptionValue(u"NUMERAZIONE_UNICA_FATTURE"_s, option));
        if (own > 0)
            document(u"FATT_ACC"_s, own);
        if (sales > 0)
            document(u"FATT_VEND"_s, sales);
        QTEST(GetNextNumeroFattAcc(2026), "expected");
    }

    void sharedNumberingFindsSalesInvoices()
    {
        document(u"FATT_VEND"_s, 5);
        QVERIFY(!FattAccExists(5, 2026, -1));
        QVERIFY(SetOptionValue(u"NUMERAZIONE_UNICA_FATTURE"_s, u"True"_s));
        QVERIFY(FattAccExists(5, 2026, -1));
        QVERIFY(!FattAccExists(5, 2025, -1));
        // No key of the accompanying invoices says anything about a sales invoice.
        QVERIFY(FattAccExists(5, 2026, 1));
    }

    void codesCollideWithoutCase()
    {
        const int supplier = db->insert(u"FORNITORI"_s, {{u"CODICE"_s, u"For'à"_s}});
        const int carrier = db->insert(u"VETTORI"_s, {{u"CODICE"_s, u"For'à"_s}});
        const int type = db->insert(u"TIPI_TRASPORTO"_s, {{u"TIPO_TRASPORTO"_s, u"For'à"_s}});
        // The database compares texts as if padded with blanks.
        for (const QString &text : {u"FOR'À"_s, u"for'à"_s, u"For'à "_s}) {
            QVERIFY(CodiceFornitoreExists(text, -1) && !CodiceFornitoreExists(text, supplier));
            QVERIFY(CodiceVettoreExists(text, -1) && !CodiceVettoreExists(text, carrier));
            QVERIFY(TipoTrasportoExists(text, -1) && !TipoTrasportoExists(text, type));
        }
        QVERIFY(!CodiceFornitoreExists(u"FOR"_s, -1));
    }

    void errorsNameTheRoutineWhereIntended()
    {
        db->connection().close();
        const QString text = u"La connessione al database non è aperta."_s;
        const QList<std::pair<QString, std::function<void()>>> named = {
            {QString(), [] { GetArticolo(1); }},
            {QString(), [] { DdTScaricoExists(1, 2026, -1); }},
            {QString(), [] { GetNextNumeroFattAcc(2026); }},
            {QString(), [] { GetUM(1); }},
            {u"GetCategoriaServizio"_s, [] { GetCategoriaServizio(1); }},
            {u"GetCliente"_s, [] { GetCliente(u"A"_s); }},
            {u"BollaCaricoExists"_s, [] { BollaCaricoExists(1, 2026, -1); }},
            {u"CodiceFornitoreExists"_s, [] { CodiceFornitoreExists(u"x"_s, -1); }},
            {u"UserHasAbilitazione"_s, [this] { UserHasAbilitazione(u"x"_s, u"x"_s, db->connection()); }},
            {u"GetValoreScaricoCostoMedio"_s, [] { GetValoreScaricoCostoMedio(u"A"_s, QDate(2026, 1, 1)); }},
            {u"RivalorizzaScarichiMagazzino"_s, [] { RivalorizzaScarichiMagazzino(u"A"_s, true); }}};
        for (const auto &[name, routine] : named)
            QCOMPARE(test::errorOf(routine), (name.isEmpty() ? QString() : u"[%1]\n\r"_s.arg(name)) + text);
    }
};

namespace {
const test::Registered<VerificheTest> registered;
}

#include "test_verifiche.moc"
