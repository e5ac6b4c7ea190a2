#include "tests/support/Fixtures.h"

namespace {

/// Clicks the list's header as the mouse does.
void clickHeader(const QTableView *grid, const QString &header)
{
    const QHeaderView *line = grid->horizontalHeader();
    const int column = test::columnOf(grid, header);
    const QPoint middle(line->sectionViewportPosition(column) + line->sectionSize(column) / 2, line->height() / 2);
    QTest::mouseClick(line->viewport(), Qt::LeftButton, {}, middle);
}

} // namespace

class TestLists : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void headerSorts()
    {
        insertReceipt(10, QDate(2026, 1, 31), u"Beta"_s, 1000);
        insertReceipt(9, QDate(2026, 12, 15), u"alfa"_s, 80);
        insertReceipt(2, QDate(2026, 2, 1), u"gamma"_s, 9.5);
        const ui::SearchForm *list = openList(u"actRicercaBolleCarico"_s);
        QTableView *grid = gridOf(*list);
        for (const auto &[header, upwards] : {std::pair(u"N."_s, u"2|9|10"_s),
                                              {u"Data"_s, u"31/01/2026|01/02/2026|15/12/2026"_s},
                                              {u"Ragione sociale"_s, u"alfa|Beta|gamma"_s},
                                              {u"Totale"_s, u"€ 9,50|€ 80,00|€ 1.000,00"_s}}) {
            test::press(list, u"cmdCerca"_s);
            test::selectRow(grid, u"alfa"_s);
            const int key = list->selectedKey();
            const QStringList expected = upwards.split(u'|');
            clickHeader(grid, header);
            QCOMPARE(test::columnTexts(grid, header), expected);
            clickHeader(grid, header);
            QCOMPARE(test::columnTexts(grid, header), QStringList(expected.rbegin(), expected.rend()));
            QCOMPARE(list->selectedKey(), key);
        }
        // What a new search finds stands as the arrow in the header tells, until the third click.
        test::press(list, u"cmdCerca"_s);
        QCOMPARE(test::columnTexts(grid, u"Totale"_s), QStringList({u"€ 1.000,00"_s, u"€ 80,00"_s, u"€ 9,50"_s}));
        clickHeader(grid, u"Totale"_s);
        QCOMPARE(grid->horizontalHeader()->sortIndicatorSection(), -1);
        QCOMPARE(test::cellText(grid, grid->currentIndex().row(), u"Ragione sociale"_s), u"alfa"_s);
        QCOMPARE(test::columnTexts(grid, u"N."_s), QStringList({u"10"_s, u"9"_s, u"2"_s}));
    }

    void movementsOfThePeriod()
    {
        for (int day = 9; day <= 13; ++day)
            test::insertInto(database(), u"MOVI_MAGA"_s,
                             {{u"DATA_MOVIMENTO"_s, QDate(2026, 2, day)},
                              {u"CODICE"_s, u"G%1"_s.arg(day)},
                              {u"QUANTITA"_s, day - 11}});
        const ui::SearchForm *list = openList(u"actRicercaMovimentiMagazzino"_s);
        test::control<ui::DateEdit>(list, u"txtDataDal"_s)->setDate(QDate(2026, 2, 10));
        test::control<ui::DateEdit>(list, u"txtDataAl"_s)->setDate(QDate(2026, 2, 12));
        test::press(list, u"cmdCerca"_s);
        const QTableView *grid = gridOf(*list);
        QCOMPARE(test::columnTexts(grid, u"Codice"_s), QStringList({u"G12"_s, u"G11"_s, u"G10"_s}));
        // Only what left the warehouse is red.
        QList<bool> red;
        for (int row = 0; row < 3; ++row) {
            const QModelIndex cell = grid->model()->index(row, test::columnOf(grid, u"Q.tà"_s));
            red.append(cell.data(Qt::ForegroundRole).value<QColor>() == ui::negativeText(QApplication::palette()));
        }
        QCOMPARE(red, QList<bool>({false, false, true}));
    }

    // The previous month and the current one, whole.
    void movementPeriod_data()
    {
        test::columns<QDate, QString>("today", "period");
        QTest::newRow("January") << QDate(2026, 1, 31) << u"01/12/2025-31/01/2026"_s;
        QTest::newRow("leap February") << QDate(2028, 2, 29) << u"01/01/2028-29/02/2028"_s;
        QTest::newRow("after February") << QDate(2026, 3, 31) << u"01/02/2026-31/03/2026"_s;
        QTest::newRow("December") << QDate(2026, 12, 1) << u"01/11/2026-31/12/2026"_s;
    }

    void movementPeriod()
    {
        QFETCH(const QDate, today);
        core::setClock([today] { return QDateTime(today, QTime(12, 0)); });
        const ui::SearchForm *list = openList(u"actRicercaMovimentiMagazzino"_s);
        const auto period = [list] {
            return test::shown(list, u"txtDataDal"_s) + u'-' + test::shown(list, u"txtDataAl"_s);
        };
        QTEST(period(), "period");
        QTest::keyClick(test::control<QWidget>(list, u"txtDataDal"_s), Qt::Key_Up);
        test::press(list, u"cmdRipristina"_s);
        QTEST(period(), "period");
    }

private:
    void insertReceipt(int number, const QDate &date, const QString &supplier, double total) const
    {
        test::insertInto(database(), u"BOLLE_CARICO"_s,
                         {{u"NUMERO"_s, number},
                          {u"DATA"_s, date},
                          {u"ANNO"_s, date.year()},
                          {u"FOR_CODICE"_s, supplier},
                          {u"FOR_RAGIONESOCIALE"_s, supplier},
                          {u"TOTALE_DOCUMENTO"_s, total}});
    }
};

static const test::Registered<TestLists> registered;

#include "test_lists.moc"
