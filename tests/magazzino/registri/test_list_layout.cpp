#include "platform/ui/ListExport.h"
#include "platform/ui/ListLayouts.h"
#include "platform/ui/UserSettings.h"
#include "tests/support/Fixtures.h"

/// Columns that the user drags, and what is kept of them; sorting, and what lists show first.
class TestListLayout : public test::AtKeptWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void draggedWidthIsKept_data()
    {
        test::table<QString, QString, bool>(
            {{"hidden when it closes", u"actRicercaFornitori"_s, u"Ragione sociale"_s, false},
             {"freed when it closes", u"actRicercaBolleCarico"_s, u"Codice"_s, true},
             {"per cent of the width", u"actRicercaMovimentiMagazzino"_s, u"Categoria"_s, true},
             {"register of the host", u"actRicercaClienti"_s, u"Codice"_s, true}});
    }

    void draggedWidthIsKept()
    {
        const auto [action, header, hasRest] = test::row<QString, QString, bool>();
        const ui::SearchForm *list = open(action);
        const int told = widthOf(gridOf(*list), header);
        drag(gridOf(*list), header, -40);
        QCOMPARE(widthOf(gridOf(*list), header), told - 40);
        test::trigger(list, u"actChiudi"_s);
        QCOMPARE(widthOf(gridOf(*open(action)), header), told - 40);
        startAgain();
        list = open(action);
        QTableView *grid = gridOf(*list);
        QCOMPARE(widthOf(grid, header), told - 40);
        QCOMPARE(allWidths(grid) == grid->viewport()->width(), hasRest);
        // The declared width stays for whoever has dragged nothing, and comes back when it is asked for.
        ui::rememberFor(file(), u"UFFICIO"_s);
        QVERIFY(ui::keptLayout(list->objectName()) == ui::ListLayout());
        ui::rememberFor(file(), host::administrator);
        test::trigger(grid->horizontalHeader(), u"actLarghezzeOriginali"_s);
        QCOMPARE(widthOf(grid, header), told);
        QVERIFY(ui::keptLayout(list->objectName()) == ui::ListLayout());
    }

    // Headers dragged, and the one clicked, stand so again after the next login; another user has the list's own.
    void orderAndSortingAreKept()
    {
        const QString action = u"actRicercaFornitori"_s;
        const QStringList own = headersFromLeft(gridOf(*open(action)));
        const QStringList dragged = {own[2], own[0], own[1], own[3]};
        for (const QString &user : {u"UFFICIO"_s, host::administrator}) {
            ui::rememberFor(file(), user);
            const QTableView *grid = gridOf(*open(action));
            drag(grid, middleOf(grid, own[2]), -middleOf(grid, own[2]).x() + 5);
            click(grid, own[0]);
            click(grid, own[0]);
            QCOMPARE(headersFromLeft(grid), dragged);
            startAgain();
        }
        for (const QString &code : {u"A1"_s, u"A3"_s, u"A2"_s})
            test::insertInto(place().database(), u"FORNITORI"_s, {{u"CODICE"_s, code}, {u"RAGIONESOCIALE"_s, code}});
        const QTableView *grid = gridOf(*open(action));
        QCOMPARE(headersFromLeft(grid), dragged);
        QCOMPARE(test::columnTexts(grid, own[0]).filter(u"A"_s), QStringList({u"A3"_s, u"A2"_s, u"A1"_s}));
        test::trigger(grid->horizontalHeader(), u"actOrdineOriginale"_s);
        QCOMPARE(headersFromLeft(grid), own);
        click(grid, own[0]);
        QCOMPARE(test::columnTexts(grid, own[0]).filter(u"A"_s), QStringList({u"A1"_s, u"A2"_s, u"A3"_s}));
        const QString list = u"MMGRicercaFornitori"_s;
        QVERIFY(ui::keptLayout(list) == ui::ListLayout());
        ui::rememberFor(file(), u"UFFICIO"_s);
        QCOMPARE(ui::keptLayout(list).order.size(), own.size());
    }

    void borderBehindTheRestMovesTheNextColumn()
    {
        const QTableView *grid = gridOf(*open(u"actRicercaBolleCarico"_s));
        const int rest = widthOf(grid, u"Ragione sociale"_s);
        const int total = widthOf(grid, u"Totale"_s);
        drag(grid, u"Ragione sociale"_s, -30);
        QCOMPARE(widthOf(grid, u"Totale"_s), total + 30);
        QCOMPARE(widthOf(grid, u"Ragione sociale"_s), rest - 30);
    }

    // The columns left as they were make room, and the window's size does so again.
    void listNeverScrollsSideways()
    {
        const QTableView *grid = gridOf(*open(u"actRicercaFornitori"_s));
        const int told = widthOf(grid, u"Codice"_s);
        drag(grid, u"Codice"_s, 150);
        QCOMPARE(widthOf(grid, u"Codice"_s), told + 150);
        QVERIFY(allWidths(grid) <= grid->viewport()->width());
        drag(grid, u"Codice"_s, 2000);
        QVERIFY(allWidths(grid) <= grid->viewport()->width());
        for (const QString &header : {u"Ragione sociale"_s, u"Telefono 1"_s, u"Telefono 2"_s})
            QVERIFY(widthOf(grid, header) >= 20);
    }

    void dialogsKeepTheirWidths()
    {
        for (const bool dragged : {true, false}) {
            TMMGModSelezionaBase &dialog = place().module().selectionDialog(u"actModSelezionaArticolo"_s);
            dialog.show();
            test::settle();
            const auto *grid = dialog.findChild<QTableView *>();
            QCOMPARE(widthOf(grid, u"Codice"_s), 168);
            if (dragged)
                drag(grid, u"Codice"_s, -40);
            dialog.hide();
            startAgain();
        }
    }

    void unwritableFileIsTold()
    {
        const ui::SearchForm *list = open(u"actRicercaFornitori"_s);
        ui::rememberFor(file(u"manca/corvane.ini"_s), host::administrator);
        place().messages.expectError(u"La cartella \"%1\" non esiste."_s.arg(file(u"manca"_s)));
        drag(gridOf(*list), u"Codice"_s, -40);
        QVERIFY(widthOf(gridOf(*list), u"Codice"_s) < 70);
    }

    void headerSorts()
    {
        const QString receipt =
            u"NUMERO=%1|DATA=2026-%2|ANNO=2026|FOR_CODICE=%3|FOR_RAGIONESOCIALE=%3|TOTALE_DOCUMENTO=%4"_s;
        for (const QString &values : {receipt.arg(u"10"_s, u"01-31"_s, u"Beta"_s, u"1000"_s),
                                      receipt.arg(u"9"_s, u"12-15"_s, u"alfa"_s, u"80"_s),
                                      receipt.arg(u"2"_s, u"02-01"_s, u"gamma"_s, u"9.5"_s)})
            test::insertInto(database(), u"BOLLE_CARICO"_s, values);
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
            click(grid, header);
            QCOMPARE(test::columnTexts(grid, header), expected);
            click(grid, header);
            QCOMPARE(test::columnTexts(grid, header), QStringList(expected.rbegin(), expected.rend()));
            QCOMPARE(list->selectedKey(), key);
        }
        // What a new search finds stands as the arrow in the header tells, until the third click.
        test::press(list, u"cmdCerca"_s);
        QCOMPARE(test::columnTexts(grid, u"Totale"_s), QStringList({u"€ 1.000,00"_s, u"€ 80,00"_s, u"€ 9,50"_s}));
        click(grid, u"Totale"_s);
        QCOMPARE(grid->horizontalHeader()->sortIndicatorSection(), -1);
        QCOMPARE(test::cellText(grid, grid->currentIndex().row(), u"Ragione sociale"_s), u"alfa"_s);
        QCOMPARE(test::columnTexts(grid, u"N."_s), QStringList({u"10"_s, u"9"_s, u"2"_s}));
    }

    void movementsOfThePeriod()
    {
        for (int day = 9; day <= 13; ++day)
            test::insertInto(database(), u"MOVI_MAGA"_s,
                             u"DATA_MOVIMENTO=2026-02-%1|CODICE=G%1|QUANTITA=%2"_s.arg(day).arg(day - 11));
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
        test::table<QDate, QString>({{"January", QDate(2026, 1, 31), u"01/12/2025-31/01/2026"_s},
                                     {"leap February", QDate(2028, 2, 29), u"01/01/2028-29/02/2028"_s},
                                     {"after February", QDate(2026, 3, 31), u"01/02/2026-31/03/2026"_s},
                                     {"December", QDate(2026, 12, 1), u"01/11/2026-31/12/2026"_s}});
    }

    void movementPeriod()
    {
        const auto [today, period] = test::row<QDate, QString>();
        core::setClock([today = today] { return QDateTime(today, QTime(12, 0)); });
        const ui::SearchForm *list = openList(u"actRicercaMovimentiMagazzino"_s);
        const auto found = [list] {
            return test::shown(list, u"txtDataDal"_s) + u'-' + test::shown(list, u"txtDataAl"_s);
        };
        QCOMPARE(found(), period);
        QTest::keyClick(test::control<QWidget>(list, u"txtDataDal"_s), Qt::Key_Up);
        test::press(list, u"cmdRipristina"_s);
        QCOMPARE(found(), period);
    }

private:
    ui::SearchForm *open(const QString &action) const
    {
        if (!action.contains(u"Clienti"_s))
            return openList(action);
        auto *form = qobject_cast<ui::SearchForm *>(place().commands().openForm(action));
        test::settle();
        return form;
    }

    static QPoint middleOf(const QTableView *grid, const QString &header)
    {
        const int column = test::columnOf(grid, header);
        return {grid->columnViewportPosition(column) + grid->columnWidth(column) / 2,
                grid->horizontalHeader()->height() / 2};
    }

    static void drag(const QTableView *grid, const QPoint &from, int by)
    {
        QWidget *line = grid->horizontalHeader()->viewport();
        QTest::mousePress(line, Qt::LeftButton, {}, from);
        for (const int step : {by / 3, by / 2, by})
            QTest::mouseMove(line, from + QPoint(step, 0));
        QTest::mouseRelease(line, Qt::LeftButton, {}, from + QPoint(by, 0));
        test::settle();
    }

    // Takes the right border of a column's header and moves it.
    static void drag(const QTableView *grid, const QString &header, int by)
    {
        const int half = widthOf(grid, header) - widthOf(grid, header) / 2 - 1;
        drag(grid, middleOf(grid, header) + QPoint(half, 0), by);
    }

    static void click(const QTableView *grid, const QString &header)
    {
        QTest::mouseClick(grid->horizontalHeader()->viewport(), Qt::LeftButton, {}, middleOf(grid, header));
        test::settle();
    }

    static QStringList headersFromLeft(const QTableView *grid)
    {
        const core::Table table = ui::tableOf(*grid);
        QStringList headers;
        for (const core::TableColumn &column : table.columns)
            headers.append(column.header);
        return headers;
    }

    static int widthOf(const QTableView *grid, const QString &header)
    {
        return grid->columnWidth(test::columnOf(grid, header));
    }
    static int allWidths(const QTableView *grid) { return grid->horizontalHeader()->length(); }
};

static const test::Registered<TestListLayout> registered;

#include "test_list_layout.moc"
