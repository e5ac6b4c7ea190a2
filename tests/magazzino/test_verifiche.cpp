#include "tests/support/Kit.h"

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

    void sharedNumberingCountsSalesInvoices()
    {
        int year = 2020; // another one for each case
        for (const auto &[option, own, sales, expected] : {std::tuple(u"False"_s, 9, 12, 10),
                                                           {u"True"_s, 9, 12, 13},
                                                           {u"true"_s, 14, 12, 15},
                                                           {u"True"_s, 0, 0, 1},
                                                           {u"forse"_s, 9, 12, 10}}) {
            ++year;
            QVERIFY(SetOptionValue(u"NUMERAZIONE_UNICA_FATTURE"_s, option));
            if (own > 0)
                document(u"FATT_ACC"_s, own, year);
            if (sales > 0)
                document(u"FATT_VEND"_s, sales, year);
            QCOMPARE(GetNextNumeroFattAcc(year), expected);
        }
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

    void textsAreComparedInTheDatabasesCapitals_data()
    {
        test::columns<QString, QString, bool>("stored", "asked", "found");
        QTest::newRow("same") << u"For'à"_s << u"For'à"_s << true;
        QTest::newRow("capitals") << u"For'à"_s << u"FOR'À"_s << true;
        QTest::newRow("small") << u"FOR'À"_s << u"for'à"_s << true;
        // The database compares texts as if padded with blanks.
        QTest::newRow("blank behind") << u"For'à"_s << u"For'à "_s << true;
        QTest::newRow("beginning") << u"For'à"_s << u"For"_s << false;
        QTest::newRow("nothing") << u"For'à"_s << QString() << false;
        // Letters that the database leaves as they are.
        QTest::newRow("sharp s") << u"Straße-7"_s << u"sTRAßE-7"_s << true;
        QTest::newRow("sharp s is no ss") << u"Straße-7"_s << u"STRASSE-7"_s << false;
        QTest::newRow("n with apostrophe") << u"ŉ1"_s << u"ŉ1"_s << true;
        QTest::newRow("ligature") << u"ﬁlo"_s << u"ﬁLO"_s << true;
        QTest::newRow("longer than any text") << u"A"_s << u"A"_s + QString(300, u' ') << false;
    }
    void textsAreComparedInTheDatabasesCapitals()
    {
        const auto [stored, asked, found] = test::row<QString, QString, bool>();
        const int supplier = db->insert(u"FORNITORI"_s, {{u"CODICE"_s, stored}});
        const int carrier = db->insert(u"VETTORI"_s, {{u"CODICE"_s, stored}});
        const int type = db->insert(u"TIPI_TRASPORTO"_s, {{u"TIPO_TRASPORTO"_s, stored}});
        QCOMPARE(CodiceFornitoreExists(asked, -1), found);
        QCOMPARE(CodiceVettoreExists(asked, -1), found);
        QCOMPARE(TipoTrasportoExists(asked, -1), found);
        QVERIFY(!CodiceFornitoreExists(asked, supplier) && !CodiceVettoreExists(asked, carrier) &&
                !TipoTrasportoExists(asked, type));
        db->insert(u"UTENTI_RUOLI"_s, {{u"USER_NAME"_s, stored}, {u"IDRUOLO_UTENTE"_s, 1}});
        QCOMPARE(UserHasAbilitazione(u"Fatture acc. (modifica)"_s, asked, db->connection()), found);
        const QDate day(2026, 3, 1);
        for (const int quantity : {4, -1})
            db->insert(u"MOVI_MAGA"_s, {{u"CODICE"_s, stored},
                                        {u"DATA_MOVIMENTO"_s, day},
                                        {u"TIPO_MOVIMENTO"_s, quantity > 0 ? u"Carico"_s : u"Scarico"_s},
                                        {u"QUANTITA"_s, quantity},
                                        {u"VALORE_IMPORTO"_s, 6 * quantity}});
        QCOMPARE(GetValoreScaricoCostoMedio(asked, day), found ? 6.0 : 0.0);
        const auto issueValue = [this] {
            return db->lines(u"SELECT VALORE FROM MOVI_MAGA WHERE TIPO_MOVIMENTO = 'Scarico'"_s).value(0).toDouble();
        };
        RivalorizzaScarichiMagazzino(asked, true);
        QCOMPARE(issueValue(), found ? 6.0 : 0.0);
        db->connection().execute(u"UPDATE MOVI_MAGA SET VALORE = 0"_s);
        RivalorizzaTuttiGliScarichi();
        QCOMPARE(issueValue(), 6.0);
    }

    void customerIsFoundByItsExactCode()
    {
        const int customer = db->insert(u"CLIENTI"_s, {{u"CODICE"_s, u"D'A1"_s}});
        QCOMPARE(GetCliente(u"D'A1"_s).id, customer);
        QCOMPARE(GetCliente(u"d'a1"_s).id, -1);
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

static const test::Registered<VerificheTest> registered;

#include "test_verifiche.moc"
