#include "magazzino/reports/uMMGStampaInventarioBase.h"
#include "tests/support/Kit.h"

namespace {

QString quotedDate(QDate date)
{
    return date.toString(u"''yyyy-MM-dd''"_s);
}

// The rule as one statement that works out every sum for each article by itself.
QString plainStatement(const InventarioFilter &filter, bool valued)
{
    const QString sum = u"(SELECT SUM(MOVI_MAGA.QUANTITA) FROM MOVI_MAGA WHERE MOVI_MAGA.CODICE = ANA_MAGA.CODICE)"_s;
    QString where =
        u"WHERE IDANA_MAGA IN (SELECT ANA_MAGA.IDANA_MAGA FROM MOVI_MAGA LEFT JOIN ANA_MAGA ON ANA_MAGA.CODICE = "
        "MOVI_MAGA.CODICE WHERE (DATA_MOVIMENTO >= %1 AND DATA_MOVIMENTO <= %2))"_s.arg(quotedDate(filter.dal),
                                                                                        quotedDate(filter.al));
    const QStringList stock = {u" %1 > 0"_s, u" (%1 = 0 OR %1 IS NULL)"_s, u" %1 < 0"_s, u" (%1 = 0 OR %1 > 0)"_s};
    if (filter.esistenza >= 0)
        where += u" AND "_s + stock[filter.esistenza].arg(sum);
    if (!filter.categorie.isEmpty()) {
        QStringList keys;
        for (const int key : filter.categorie)
            keys.append(QString::number(key));
        where += u" AND (ANA_MAGA.IDCATEGORIA_ANA_MAGA IN ("_s + keys.join(u',') + u"))"_s;
    }
    const QString value = u", (SELECT SUM(MOVI_MAGA.VALORE_IMPORTO) FROM MOVI_MAGA WHERE MOVI_MAGA.CODICE = "
                          "ANA_MAGA.CODICE) AS VALORE"_s;
    return u"SELECT ANA_MAGA.CODICE, ANA_MAGA.DESCRIZIONE, "_s + sum + u" AS ESISTENZA"_s +
           (valued ? value : QString()) + u" FROM ANA_MAGA "_s + where + u" ORDER BY UPPER(ANA_MAGA.CODICE)"_s;
}

} // namespace

/// The statement behind the inventories reads the movements once. It must answer as the plain one does, which asks for
/// each article by itself and takes minutes where this one takes a second.
class TestInventario : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        database_ = std::make_unique<test::ModuleDatabase>();
        // Databases of other origin let these be unknown.
        for (const QString &column : {u"QUANTITA"_s, u"VALORE_IMPORTO"_s})
            database_->connection().execute(u"ALTER TABLE MOVI_MAGA ALTER %1 DROP NOT NULL"_s.arg(column));
        insertRandomData(20260316);
    }

    void answersAsThePlainStatement()
    {
        const QList<QList<int>> categories = {
            {}, {categories_[0]}, {categories_[11]}, categories_.mid(0, 6), categories_};
        const QDate june(2026, 6, 1);
        // A year, a day, always, before everything, and the wrong way round.
        for (const auto &[from, to] : {std::pair(QDate(2026, 1, 1), QDate(2026, 12, 31)),
                                       {june, june},
                                       {QDate(2000, 1, 1), QDate(2100, 12, 31)},
                                       {QDate(2020, 1, 1), QDate(2024, 12, 31)},
                                       {QDate(2026, 12, 31), QDate(2026, 1, 1)}}) {
            qsizetype listed = 0;
            for (int stock = -1; stock < 4; ++stock) {
                for (qsizetype i = 0; i < categories.size(); ++i) {
                    const bool valued = (stock + i) % 2 == 0;
                    const InventarioFilter filter{
                        .dal = from, .al = to, .esistenza = stock, .categorie = categories[i]};
                    const QStringList expected =
                        test::answersOf(database_->connection(), plainStatement(filter, valued));
                    QCOMPARE(test::answersOf(database_->connection(), InventarioSQL(filter, valued)), expected);
                    listed += expected.size() - (valued ? 4 : 3);
                }
            }
            QCOMPARE(listed > 0, from <= to && to.year() > 2024);
        }
    }

private:
    void insertRandomData(quint32 seed)
    {
        QRandomGenerator random(seed);
        data::Transaction transaction(database_->connection());
        for (int i = 0; i < 12; ++i) {
            const QVariant parent = i < 3 ? QVariant() : QVariant(categories_[random.bounded(i)]);
            categories_.append(database_->insert(u"CATEGORIE_ANA_MAGA"_s,
                                                 {{u"IDPADRE"_s, parent}, {u"CATEGORIA"_s, u"Categoria %1"_s.arg(i)}}));
        }
        QStringList codes;
        for (int i = 0; i < 60; ++i) {
            // Small and capital initials mixed, so that the order by upper case is another one than by code.
            const QString code = (i % 2 ? u"art%1"_s : u"ART%1"_s).arg(random.bounded(100'000) * 1000 + i);
            codes.append(code);
            const QVariant category = random.bounded(4) == 0 ? QVariant() : QVariant(categories_[random.bounded(12)]);
            database_->insert(u"ANA_MAGA"_s, {{u"CODICE"_s, code},
                                              {u"DESCRIZIONE"_s, u"Articolo %1"_s.arg(i)},
                                              {u"IDCATEGORIA_ANA_MAGA"_s, category}});
        }
        for (int i = 0; i < 220; ++i) {
            // A third of the articles has no movement, some movements belong to no article or to another case of a
            // code.
            QString code = codes[random.bounded(40)];
            const int kind = random.bounded(12);
            if (kind == 0)
                code = u"SENZA%1"_s.arg(i);
            else if (kind == 1)
                code = code == code.toUpper() ? code.toLower() : code.toUpper();
            // Quantities that often cancel out, and some that are not known.
            const int quantity = random.bounded(-2, 3);
            const QVariant unknown;
            database_->insert(u"MOVI_MAGA"_s,
                              {{u"CODICE"_s, code},
                               {u"DATA_MOVIMENTO"_s, QDate(2025, 1, 1).addDays(random.bounded(1000))},
                               {u"QUANTITA"_s, random.bounded(6) == 0 ? unknown : QVariant(quantity)},
                               {u"VALORE_IMPORTO"_s, random.bounded(6) == 0 ? unknown : QVariant(quantity * 1.25)}});
        }
        for (const QVariant &quantity : {QVariant(), QVariant(0)}) {
            database_->insert(u"MOVI_MAGA"_s, {{u"CODICE"_s, codes[quantity.isValid() ? 50 : 51]},
                                               {u"DATA_MOVIMENTO"_s, QDate(2026, 6, 1)},
                                               {u"QUANTITA"_s, quantity}});
        }
        transaction.commit();
        QVERIFY(!database_->lines(u"SELECT 1 FROM MOVI_MAGA WHERE QUANTITA IS NULL AND VALORE_IMPORTO IS NULL"_s)
                     .isEmpty());
    }

    std::unique_ptr<test::ModuleDatabase> database_;
    QList<int> categories_;
};

static const test::Registered<TestInventario> registration;

#include "test_inventario.moc"
