#include "benchmark/BenchData.h"
#include "magazzino/MMGUtils_insiemi.h"
#include "magazzino/reports/uMMGModStampaSottoscortaRiordino.h"
#include "magazzino/reports/uMMGStampaInventarioBase.h"
#include "platform/core/Progress.h"
#include "tests/support/Kit.h"

/// Statements that were made fast answer as the plain ones do, on the small data set of the measurements.
class TestBusyFirm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        database_ = std::make_unique<test::ModuleDatabase>(test::Content::DemoData);
        bench::makeArticles(database_->connection(), 1, bench::small.articles);
        bench::makeDocuments(database_->connection(), bench::small, 1, bench::small.documents);
        // Articles that are entered later take the places of those that went.
        database_->connection().execute(u"UPDATE ANA_MAGA SET DESCRIZIONE = 'Cambiato' WHERE MOD(IDANA_MAGA, 3) = 0"_s);
        database_->connection().execute(u"DELETE FROM ANA_MAGA WHERE MOD(IDANA_MAGA, 5) = 0"_s);
        for (int i = 0; i < 20; ++i)
            database_->insert(u"ANA_MAGA"_s,
                              {{u"CODICE"_s, i % 2 ? bench::articleCode(i * 5).toLower() : u"nuovo%1"_s.arg(i)},
                               {u"DESCRIZIONE"_s, u"Nuovo"_s}});
    }

    void cleanup() { database_.reset(); }

    void levelReportsAnswerAsThePlainStatement()
    {
        const QString stock =
            u"COALESCE((SELECT SUM(MOVI_MAGA.QUANTITA) FROM MOVI_MAGA WHERE MOVI_MAGA.CODICE=ANA_MAGA.CODICE), 0)"_s;
        const QString plain = u"SELECT ANA_MAGA.CODICE, ANA_MAGA.DESCRIZIONE, ANA_MAGA.SOTTOSCORTA, "
                              "ANA_MAGA.RIORDINO, %1 AS ESISTENZA FROM ANA_MAGA %2"_s;
        const QStringList conditions = {
            {}, u"WHERE %1 <= SOTTOSCORTA"_s.arg(stock), u"WHERE %1 <= RIORDINO"_s.arg(stock)};
        for (int type = -1; type <= 1; ++type) {
            const QStringList expected = answers(plain.arg(stock, conditions[type + 1]));
            QVERIFY(expected.size() > 20);
            QCOMPARE(answers(SottoscortaRiordinoSQL(type)), expected);
        }
    }

    void listsShowThePlainStatementsRows_data()
    {
        test::table<QString, QStringList>(
            {{"delivery notes",
              u"SELECT * FROM DDT_SCARICO WHERE ANNO = %1 AND CLI_CODICE CONTAINING '1' ORDER BY ANNO DESC, NUMERO "
              "DESC"_s.arg(core::today().year()),
              {u"IDDDT_SCARICO"_s, u"NUMERO"_s, u"DATA"_s, u"CLI_CODICE"_s}},
             {"articles",
              u"SELECT ANA_MAGA.*, CATEGORIE_ANA_MAGA.CATEGORIA FROM ANA_MAGA LEFT JOIN "
              "CATEGORIE_ANA_MAGA ON CATEGORIE_ANA_MAGA.IDCATEGORIA_ANA_MAGA=ANA_MAGA.IDCATE"
              "GORIA_ANA_MAGA  ORDER BY UPPER(CODICE)"_s,
              {u"IDANA_MAGA"_s, u"CODICE"_s, u"DESCRIZIONE"_s, u"CATEGORIA"_s}}});
    }

    void listsShowThePlainStatementsRows()
    {
        const auto [plain, columns] = test::row<QString, QStringList>();
        const data::Rows expected = database_->connection().select(plain);
        const data::Rows limited = database_->connection().select(data::limitedTo(columns, plain));
        QCOMPARE(limited.columns().size(), columns.size());
        QVERIFY(expected.size() > 10);
        QCOMPARE(limited.size(), expected.size());
        for (qsizetype row = 0; row < expected.size(); ++row) {
            for (const QString &column : columns)
                QCOMPARE(limited.at(row, column), expected.at(row, column));
        }
    }

    void revaluingEveryArticleAtOnceGivesTheSameValues()
    {
        const QString values = u"SELECT IDMOVI_MAGA, VALORE, VALORE_IMPORTO FROM MOVI_MAGA ORDER BY 1"_s;
        // A code that the database and the program put into capitals in different ways.
        database_->connection().execute(u"UPDATE MOVI_MAGA SET CODICE = 'fuß' WHERE MOD(IDMOVI_MAGA, 97) = 5"_s);
        database_->connection().execute(u"UPDATE MOVI_MAGA SET CODICE = 'fuss' WHERE MOD(IDMOVI_MAGA, 97) = 6"_s);
        const QStringList before = answers(values);
        const auto valuesAfter = [&](const std::function<void()> &revalue) {
            data::Transaction undone(database_->connection());
            revalue();
            return answers(values);
        };
        const QStringList expected = valuesAfter([this] {
            const data::Rows codes = database_->connection().select(u"SELECT CODICE FROM MOVI_MAGA GROUP BY CODICE"_s);
            for (qsizetype row = 0; row < codes.size(); ++row)
                RivalorizzaScarichiMagazzino(codes.text(row, u"CODICE"), false);
        });
        QVERIFY(expected != before);
        const auto revalueAtOnce = [this] {
            core::Progress unseen;
            RivalorizzaTuttiGliScarichi(database_->connection(), unseen);
        };
        QCOMPARE(valuesAfter(revalueAtOnce), expected);
    }

private:
    QStringList answers(const QString &sql) { return test::answersOf(database_->connection(), sql); }
    std::unique_ptr<test::ModuleDatabase> database_;
};

static const test::Registered<TestBusyFirm> registered;

#include "test_busy_firm.moc"
