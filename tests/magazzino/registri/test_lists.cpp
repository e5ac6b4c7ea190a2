#include "platform/core/Clock.h"
#include "tests/magazzino/registri/Registri.h"
#include "tests/support/TestMain.h"

#include <QDateEdit>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace {

const QString suppliers = u"actRicercaFornitori"_s;
const QString movements = u"actRicercaMovimentiMagazzino"_s;

/// Clicks the list's header as the mouse does.
void clickHeader(const QTableView *grid, const QString &header)
{
    const QHeaderView *line = grid->horizontalHeader();
    const int column = test::columnOf(grid, header);
    const QPoint middle(line->sectionViewportPosition(column) + line->sectionSize(column) / 2, line->height() / 2);
    QTest::mouseClick(line->viewport(), Qt::LeftButton, {}, middle);
}

} // namespace

class TestLists : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { workplace_ = std::make_unique<test::Workplace>(); }
    void cleanup() { workplace_.reset(); }

    void filters_data();
    void filters();
    void headerSorts_data();
    void headerSorts();
    void movementPeriod();
    void movementsOfThePeriod();
    void documentsOfAYear_data();
    void documentsOfAYear();
    void selectionSurvivesASearch();

private:
    test::Workplace &place() const { return *workplace_; }
    ui::SearchForm *list(const QString &action) const { return test::openList(place(), action); }
    /// Fills in filters written as "name=text|name=text" and searches.
    void search(const ui::SearchForm *list, const QString &filters) const;
    void insertDocument(const QString &table, int number, const QDate &date, const QString &code, const QString &name,
                        double total = 0) const;
    void insertSupplier(const QString &code, const QString &name) const;

    std::unique_ptr<test::Workplace> workplace_;
};

void TestLists::search(const ui::SearchForm *list, const QString &filters) const
{
    for (const QString &filter : filters.split(u'|', Qt::SkipEmptyParts))
        test::retype(list, filter.section(u'=', 0, 0), filter.section(u'=', 1));
    test::press(list, u"cmdCerca"_s);
}

void TestLists::insertDocument(const QString &table, int number, const QDate &date, const QString &code,
                               const QString &name, double total) const
{
    const QString prefix = table == u"BOLLE_CARICO" ? u"FOR_"_s : u"CLI_"_s;
    test::insertInto(place().database(), table,
                     {{u"NUMERO"_s, number},
                      {u"DATA"_s, date},
                      {u"ANNO"_s, date.year()},
                      {prefix + u"CODICE"_s, code},
                      {prefix + u"RAGIONESOCIALE"_s, name},
                      {u"TOTALE_DOCUMENTO"_s, total}});
}

void TestLists::insertSupplier(const QString &code, const QString &name) const
{
    test::insertInto(place().database(), u"FORNITORI"_s, {{u"CODICE"_s, code}, {u"RAGIONESOCIALE"_s, name}});
}

void TestLists::filters_data()
{
    QTest::addColumn<QString>("filters");
    QTest::addColumn<QString>("codes");
    QTest::newRow("code, anywhere and without case") << u"txtCodice=z-1"_s << u"Z-1|XZ-10"_s;
    QTest::newRow("both") << u"txtCodice=Z-2|txtRagioneSociale=officine"_s << u"Z-2"_s;
    QTest::newRow("quote") << u"txtRagioneSociale=D'A"_s << u"Z-2"_s;
    QTest::newRow("per cent is a character") << u"txtRagioneSociale=%"_s << u"P%"_s;
    QTest::newRow("underscore is a character") << u"txtCodice=Z_1"_s << QString();
    QTest::newRow("accent") << u"txtRagioneSociale=nafta è"_s << u"XZ-10"_s;
}

void TestLists::filters()
{
    QFETCH(QString, filters);
    QFETCH(QString, codes);
    place().database().run(u"DELETE FROM FORNITORI"_s);
    insertSupplier(u"Z-1"_s, u"Officine Anselmi"_s);
    insertSupplier(u"Z-2"_s, u"Officine D'Amico"_s);
    insertSupplier(u"XZ-10"_s, u"Pompe nafta è altro"_s);
    insertSupplier(u"P%"_s, u"Sconti 100% e oltre"_s);
    const ui::SearchForm *list = this->list(suppliers);
    search(list, filters);
    QCOMPARE(test::columnTexts(test::gridOf(list), u"Codice"_s).join(u'|'), codes);
}

void TestLists::headerSorts_data()
{
    QTest::addColumn<QString>("header");
    QTest::addColumn<QString>("upwards");
    QTest::newRow("number") << u"N."_s << u"2|9|10"_s;
    QTest::newRow("date") << u"Data"_s << u"31/01/2026|01/02/2026|15/12/2026"_s;
    QTest::newRow("text without case") << u"Ragione sociale"_s << u"alfa|Beta|gamma"_s;
    QTest::newRow("amount") << u"Totale"_s << u"€ 9,50|€ 80,00|€ 1.000,00"_s;
}

void TestLists::headerSorts()
{
    QFETCH(QString, header);
    QFETCH(QString, upwards);
    insertDocument(u"BOLLE_CARICO"_s, 10, QDate(2026, 1, 31), u"A"_s, u"Beta"_s, 1000);
    insertDocument(u"BOLLE_CARICO"_s, 9, QDate(2026, 12, 15), u"B"_s, u"alfa"_s, 80);
    insertDocument(u"BOLLE_CARICO"_s, 2, QDate(2026, 2, 1), u"C"_s, u"gamma"_s, 9.5);
    const ui::SearchForm *list = this->list(u"actRicercaBolleCarico"_s);
    search(list, {});
    QTableView *grid = test::gridOf(list);
    test::selectRow(grid, u"alfa"_s);
    const int key = list->selectedKey();
    const QStringList expected = upwards.split(u'|');
    clickHeader(grid, header);
    QCOMPARE(test::columnTexts(grid, header), expected);
    clickHeader(grid, header);
    QCOMPARE(test::columnTexts(grid, header), QStringList(expected.rbegin(), expected.rend()));
    QCOMPARE(list->selectedKey(), key);
    // The arrow in a header would lie about a list that stands in the order of its query.
    search(list, {});
    QVERIFY(!grid->horizontalHeader()->isSortIndicatorShown());
    QCOMPARE(test::columnTexts(grid, u"N."_s), QStringList({u"10"_s, u"9"_s, u"2"_s}));
}

void TestLists::documentsOfAYear_data()
{
    QTest::addColumn<QString>("action");
    QTest::newRow("DDT_SCARICO") << u"actRicercaDdTScarico"_s;
    QTest::newRow("BOLLE_CARICO") << u"actRicercaBolleCarico"_s;
}

void TestLists::documentsOfAYear()
{
    QFETCH(QString, action);
    const QString table = QString::fromLatin1(QTest::currentDataTag());
    insertDocument(table, 9, QDate(2026, 1, 1), u"C9"_s, u"Ferramenta D'Amico"_s);
    insertDocument(table, 10, QDate(2026, 1, 2), u"C10"_s, u"Sconti 100%"_s);
    insertDocument(table, 11, QDate(2025, 12, 31), u"C11"_s, u"Ferramenta D'Amico"_s);
    const ui::SearchForm *list = this->list(action);
    const auto found = [&](const QString &filters) {
        test::trigger(list, u"actRipristina"_s);
        search(list, filters);
        return test::columnTexts(test::gridOf(list), u"N."_s).join(u'|');
    };
    QCOMPARE(found({}), u"10|9"_s);
    QCOMPARE(found(u"txtAnno=2025"_s), u"11"_s);
    QCOMPARE(found(u"txtRagioneSociale=d'a"_s), u"9"_s);
    QCOMPARE(found(u"txtCodice=c1|txtRagioneSociale=ferramenta|txtAnno=2025"_s), u"11"_s);
}

void TestLists::selectionSurvivesASearch()
{
    for (int i = 100; i < 300; ++i)
        insertSupplier(QString::number(i), u"Ditta %1"_s.arg(i));
    const ui::SearchForm *list = this->list(suppliers);
    search(list, u"txtRagioneSociale=Ditta"_s);
    QTableView *grid = test::gridOf(list);
    test::selectRow(grid, u"250"_s);
    grid->verticalScrollBar()->setValue(140);
    const int key = list->selectedKey();
    insertSupplier(u"ULTIMO"_s, u"Ditta ultima"_s);
    search(list, {});
    QCOMPARE(grid->model()->rowCount(), 201);
    QCOMPARE(list->selectedKey(), key);
    QCOMPARE(grid->verticalScrollBar()->value(), 140);

    search(list, u"txtCodice=10"_s);
    QCOMPARE(list->selectedKey(), -1);
}

void TestLists::movementPeriod()
{
    const std::pair<QDate, QString> periods[] = {{QDate(2026, 1, 31), u"01/12/2025-31/01/2026"_s},
                                                 {QDate(2028, 2, 29), u"01/01/2028-29/02/2028"_s},
                                                 {QDate(2026, 3, 31), u"01/02/2026-31/03/2026"_s}};
    const ui::SearchForm *list = this->list(movements);
    for (const auto &[today, period] : periods) {
        core::setClock([today = today] { return QDateTime(today, QTime(12, 0)); });
        test::press(list, u"cmdRipristina"_s);
        QCOMPARE(test::shown(list, u"txtDataDal"_s) + u'-' + test::shown(list, u"txtDataAl"_s), period);
    }
}

void TestLists::movementsOfThePeriod()
{
    for (int day = 9; day <= 13; ++day)
        test::insertInto(
            place().database(), u"MOVI_MAGA"_s,
            {{u"DATA_MOVIMENTO"_s, QDate(2026, 2, day)}, {u"CODICE"_s, u"G%1"_s.arg(day)}, {u"QUANTITA"_s, day - 11}});
    const ui::SearchForm *list = this->list(movements);
    test::control<QDateEdit>(list, u"txtDataDal"_s)->setDate(QDate(2026, 2, 10));
    test::control<QDateEdit>(list, u"txtDataAl"_s)->setDate(QDate(2026, 2, 12));
    search(list, {});
    const QTableView *grid = test::gridOf(list);
    QCOMPARE(test::columnTexts(grid, u"Codice"_s), QStringList({u"G12"_s, u"G11"_s, u"G10"_s}));
    // Only what left the warehouse is red.
    QList<bool> red;
    for (int row = 0; row < 3; ++row) {
        const QModelIndex cell = grid->model()->index(row, test::columnOf(grid, u"Q.tà"_s));
        red.append(cell.data(Qt::ForegroundRole).value<QColor>() == QColor(Qt::red));
    }
    QCOMPARE(red, QList<bool>({false, false, true}));
}

static const test::Registered<TestLists> registered;

#include "test_lists.moc"
