#include "magazzino/MMGUtils_insiemi.h"
#include "platform/core/Decimal.h"
#include "platform/data/DataSet.h"
#include "tests/support/Kit.h"

#include <random>

namespace {

const QString allColumns = u"SELECT IDMOVI_MAGA, IDMAGAZZINO, DATA_MOVIMENTO, CODICE, DESCRIZIONE, "
                           "IDCATEGORIA_ANA_MAGA, TIPO_MOVIMENTO, PREZZO, COSTO, QUANTITA, VALORE, VALORE_IMPORTO, "
                           "IDCAUSALE_MAGA, RIF_DOC_TIPO, RIF_DOC_ID, RIF_DOC_IDRIGA, NOTE FROM MOVI_MAGA ORDER BY 1"_s;
const QString values = u"SELECT IDMOVI_MAGA, VALORE, VALORE_IMPORTO FROM MOVI_MAGA ORDER BY 1"_s;

TMoviMaga sample()
{
    TMoviMaga movement;
    movement.id = 4711;
    movement.dataMovimento = QDate(2026, 3, 31);
    movement.codice = u"A'1"_s;
    movement.descrizione = u"Vite"_s;
    movement.idCategoria = 3;
    movement.tipoMovimento = u"Scarico"_s;
    movement.prezzo = 1.005;
    movement.costo = 2.5;
    movement.quantita = -4;
    movement.valore = 0.335;
    movement.valoreImporto = -1.005;
    movement.idCausaleMaga = 2;
    movement.rifDocTipo = u"D.d.T. di scarico"_s;
    movement.rifDocId = 8;
    movement.rifDocIdRiga = 9;
    movement.note = u"nota"_s;
    return movement;
}
const QString sampleText = u"%1|0|2026-03-31|A'1|Vite|3|Scarico|1.01|2.5|-4|0.34|-1.01|2|D.d.T. di scarico|8|9|nota"_s;

// The rule by itself: every issue in date order, each written before the next one is valued.
void revalueStepByStep(data::Connection &connection, const QString &code)
{
    data::DataSet issues(&connection);
    issues.setUpdateTarget({u"MOVI_MAGA"_s, u"IDMOVI_MAGA"_s});
    issues.setCommandText(u"SELECT * FROM MOVI_MAGA WHERE UPPER(CODICE) = '%1' AND TIPO_MOVIMENTO = 'Scarico' ORDER "
                          "BY DATA_MOVIMENTO, IDMOVI_MAGA"_s.arg(code.toUpper()));
    for (issues.open(); !issues.atEnd(); issues.next()) {
        issues.edit();
        const double value = GetValoreScaricoCostoMedio(code, issues.date(u"DATA_MOVIMENTO"_s));
        issues.setValue(u"VALORE"_s, value);
        issues.setValue(u"VALORE_IMPORTO"_s, issues.number(u"QUANTITA"_s) * value);
        issues.updateBatch();
    }
}

} // namespace

class CostiTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<test::ModuleDatabase> db;

    int movement(double quantity, double amount, QDate date = QDate(2026, 1, 10), const QString &code = u"ART"_s)
    {
        return db->insert(u"MOVI_MAGA"_s, {{u"CODICE"_s, code},
                                           {u"DATA_MOVIMENTO"_s, date},
                                           {u"TIPO_MOVIMENTO"_s, quantity > 0 ? u"Carico"_s : u"Scarico"_s},
                                           {u"QUANTITA"_s, quantity},
                                           {u"VALORE_IMPORTO"_s, amount}});
    }

    // Few different dates and quantities, so that equal dates, zero and negative stock all occur.
    void randomMovements(quint32 seed)
    {
        std::mt19937 random(seed);
        const auto upTo = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
        data::Transaction transaction(db->connection());
        for (int i = 0; i < 60; ++i) {
            const bool load = upTo(5) < 2;
            const double quantity = (load ? 1 : -1) * (upTo(3) == 0 ? 1 + upTo(4) : (1 + upTo(2000)) / 100.0);
            const double amount = load ? (1 + upTo(100000)) / 100.0 : -upTo(20000) / 100.0;
            movement(quantity, amount, QDate(2026, 1, 1).addDays(upTo(12)), upTo(2) ? u"ART"_s : u"Art"_s);
        }
        movement(5, 50, QDate(2026, 1, 1), u"ALTRO"_s);
        movement(-5, 1, QDate(2026, 1, 2), u"ALTRO"_s);
        transaction.commit();
    }

private Q_SLOTS:
    void init() { db = std::make_unique<test::ModuleDatabase>(); }
    void cleanup() { db.reset(); }

    void keyReallyGivenComesBackWhenAnotherInsertsInBetween()
    {
        // Takes a number between the prediction and the row's own, as another workstation would.
        db->connection().execute(u"CREATE TRIGGER SKIP FOR MOVI_MAGA BEFORE INSERT POSITION 0 AS DECLARE N INTEGER; "
                                 "BEGIN N = GEN_ID(GN_IDMOVI_MAGA, 1); END"_s);
        TMoviMaga written = sample();
        AggiornaMoviMaga(written, true);
        QCOMPARE(written.id, 2);
        QCOMPARE(db->lines(allColumns), QStringList(sampleText.arg(2)));
    }

    void updatedMovementMovesToThePredictedKey()
    {
        movement(1, 1);
        movement(2, 2);
        TMoviMaga written = sample();
        written.id = 1;
        AggiornaMoviMaga(written, false);
        QCOMPARE(written.id, 3);
        QCOMPARE(db->lines(allColumns).value(1), sampleText.arg(3));
        QCOMPARE(GetLastGeneratorValue(u"GN_IDMOVI_MAGA"_s, db->connection()), 2);
    }

    void failedMovementWritesNothing()
    {
        TMoviMaga missing = sample();
        QCOMPARE(test::errorOf([&] { AggiornaMoviMaga(missing, false); }),
                 u"[AggiornaMoviMaga]\n\rImpossibile trovare il movimento di magazzino!"_s);
        TMoviMaga tooLong = sample();
        tooLong.codice = QString(21, u'x');
        QVERIFY(test::errorOf([&] { AggiornaMoviMaga(tooLong, true); }).startsWith(u"[AggiornaMoviMaga]\n\r"_s));
        QCOMPARE(db->lines(allColumns), QStringList());
    }

    void averageCost()
    {
        using Pairs = QList<std::pair<double, double>>; // quantity and amount, all on the 10th
        const QDate day(2026, 1, 10);
        const QDate dayBefore = day.addDays(-1);
        int number = 0;
        for (const auto &[movements, date, expected] : {std::tuple(Pairs(), day, 0.0),
                                                        {Pairs{{10, 20}, {10, 40}}, day, 3.0},
                                                        {Pairs{{10, 20}}, dayBefore, 0.0},
                                                        {Pairs{{10, 20}, {10, 40}, {-5, -15}}, day, 3.0},
                                                        {Pairs{{10, 20}, {-10, -15}}, day, 0.0},
                                                        {Pairs{{-5, -10}}, day, 2.0},
                                                        {Pairs{{0.1, 1}, {0.2, 1}, {-0.3, -1}}, day, 0.0}}) {
            // An article of its own for each.
            ++number;
            for (const auto &[quantity, amount] : movements)
                movement(quantity, amount, day, u"ART%1"_s.arg(number));
            QCOMPARE(GetValoreScaricoCostoMedio(u"art%1"_s.arg(number), date), expected);
        }
    }

    void revaluationEqualsTheStepByStepRule_data() { test::cases(u"1 2 3 4 5 6 7 8 9 10 11 12"_s.split(u' ')); }
    void revaluationEqualsTheStepByStepRule()
    {
        randomMovements(test::currentCase().toUInt());
        const QStringList before = db->lines(values);
        QStringList expected;
        {
            const data::Transaction undone(db->connection());
            revalueStepByStep(db->connection(), u"ART"_s);
            expected = db->lines(values);
        }
        QCOMPARE(db->lines(values), before);
        RivalorizzaScarichiMagazzino(u"art"_s, true);
        QCOMPARE(db->lines(values), expected);
        QVERIFY(expected != before);
    }

    void failedRevaluationIsSwallowed()
    {
        // A writer's error in the middle: with a transaction of its own nothing stays, without it the first one does.
        movement(10, 100);
        const int first = movement(-1, 0);
        movement(-2, 0);
        // As many as are written at once.
        for (int i = 0; i < 60; ++i)
            movement(-0.1, 0, QDate(2026, 1, 11));
        db->connection().execute(u"CREATE EXCEPTION REFUSED 'no'"_s);
        db->connection().execute(u"CREATE TRIGGER REFUSE FOR MOVI_MAGA BEFORE UPDATE AS BEGIN IF (NEW.QUANTITA = "
                                 "-2) THEN EXCEPTION REFUSED; END"_s);
        const QStringList before = db->lines(values);
        RivalorizzaScarichiMagazzino(u"ART"_s, true);
        QCOMPARE(db->lines(values), before);
        QVERIFY(!db->connection().inTransaction());
        RivalorizzaScarichiMagazzino(u"ART"_s, false);
        QCOMPARE(db->lines(values).value(first - 1), u"2|14.29|-14.29"_s);
        QCOMPARE(db->lines(values).mid(2), before.mid(2));
    }

    // Valued together as one after the other, also where the stock goes through zero and codes differ in their letters.
    void movementsOfOneSave()
    {
        movement(3, 10);
        movement(1, 7, QDate(2026, 1, 10), u"ALTRO"_s);
        QList<TMoviMaga> movements;
        const QList<std::pair<QString, double>> issues = {{u"art"_s, -2}, {u"ALTRO"_s, -0.335}, {u"ART "_s, -1},
                                                          {u"Art"_s, -4}, {u"ART"_s, -1},       {u"MAI"_s, -1},
                                                          {u"MAI"_s, -1}};
        for (const auto &[code, quantity] : issues) {
            TMoviMaga next = sample();
            next.codice = code;
            next.quantita = quantity;
            movements.append(next);
        }
        const QDate date = sample().dataMovimento;
        QList<double> expected;
        {
            data::Transaction transaction(db->connection());
            for (TMoviMaga next : std::as_const(movements)) {
                next.valore = GetValoreScaricoCostoMedio(next.codice, date);
                next.valoreImporto = next.valore * next.quantita;
                expected.append(next.valore);
                AggiornaMoviMaga(next, true);
            }
        }
        QVERIFY(db->lines(values).size() == 2);
        ValutaAlCostoMedio(movements, date);
        InserisciMoviMaga(movements);
        for (int i = 0; i < expected.size(); ++i) {
            QCOMPARE(movements[i].valore, expected[i]);
            QCOMPARE(db->lines(u"SELECT QUANTITA FROM MOVI_MAGA WHERE IDMOVI_MAGA = %1"_s.arg(movements[i].id)),
                     QStringList({QString::number(core::roundDecimal(movements[i].quantita, 2))}));
        }
    }

    void revaluationReadsInsideItsTransaction()
    {
        QStringList outside;
        QStringList inside;
        db->connection().setStatementHook([&](const QString &sql) {
            (db->connection().inTransaction() ? inside : outside).append(sql.section(u' ', 0, 1));
        });
        // An article without issues needs none.
        movement(10, 100);
        inside.clear();
        outside.clear();
        RivalorizzaScarichiMagazzino(u"ART"_s, true);
        QCOMPARE(outside.size() + inside.size(), 1);
        QCOMPARE(inside, QStringList());
        movement(-1, 0);
        inside.clear();
        RivalorizzaScarichiMagazzino(u"ART"_s, true);
        QCOMPARE(inside, QStringList({u"SELECT IDMOVI_MAGA,"_s, u"UPDATE MOVI_MAGA"_s, u"COMMIT"_s}));
    }
};

static const test::Registered<CostiTest> registered;

#include "test_costi.moc"
