#include "host/ui/MainWindow.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/core/Clock.h"
#include "platform/core/Error.h"
#include "tests/magazzino/registri/Registri.h"
#include "tests/support/TestMain.h"

#include <QDateEdit>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QSpinBox>
#include <QTableView>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

const QString suppliers = u"actRicercaFornitori"_s;
const QString movements = u"actRicercaMovimentiMagazzino"_s;
const QString notes = u"actRicercaDdTScarico"_s;

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

    void columnsAndFirstRows_data();
    void columnsAndFirstRows();
    void rowsAreShown_data();
    void rowsAreShown();
    void filters_data();
    void filters();
    void enterInAFilterSearches_data();
    void enterInAFilterSearches();
    void restoringEmptiesTheFiltersOnly();
    void letters();
    void order_data();
    void order();
    void headerSorts_data();
    void headerSorts();
    void searchOrdersAnew();
    void documentsOfAYear_data() { documentLists(); }
    void documentsOfAYear();
    void deletingADocument_data() { documentLists(); }
    void deletingADocument();
    void movementPeriod_data();
    void movementPeriod();
    void movementsOfThePeriod();
    void negativeQuantitiesAreRed();
    void waysToOpen_data();
    void waysToOpen();
    void nothingSelectedOpensNothing();
    void selectionSurvivesASearch();
    void savedRecordShowsAtTheNextSearch();
    void failedSearchIsTold();

private:
    static void documentLists();
    test::Workplace &place() const { return *workplace_; }
    ui::SearchForm *list(const QString &action) const { return test::openList(place(), action); }
    /// Fills in filters written as "name=text|name=text" and searches.
    void search(const ui::SearchForm *list, const QString &filters) const;
    void insertDocument(const QString &table, int number, const QDate &date, const QString &code, const QString &name,
                        double total = 0) const;
    int insertMovement(const QDate &date, const QString &code, double quantity) const;
    void insertSupplier(const QString &code, const QString &name, const QString &phone = {}) const;

    std::unique_ptr<test::Workplace> workplace_;
};

void TestLists::documentLists()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("table");
    QTest::newRow("delivery notes") << notes << u"DDT_SCARICO"_s;
    QTest::newRow("receipts") << u"actRicercaBolleCarico"_s << u"BOLLE_CARICO"_s;
}

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

int TestLists::insertMovement(const QDate &date, const QString &code, double quantity) const
{
    return test::insertInto(place().database(), u"MOVI_MAGA"_s,
                            {{u"DATA_MOVIMENTO"_s, date},
                             {u"CODICE"_s, code},
                             {u"DESCRIZIONE"_s, u"Articolo "_s + code},
                             {u"IDCATEGORIA_ANA_MAGA"_s, 1},
                             {u"QUANTITA"_s, quantity}});
}

void TestLists::insertSupplier(const QString &code, const QString &name, const QString &phone) const
{
    test::insertInto(place().database(), u"FORNITORI"_s,
                     {{u"CODICE"_s, code}, {u"RAGIONESOCIALE"_s, name}, {u"TELEFONO1"_s, phone}});
}

void TestLists::columnsAndFirstRows_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("headers");
    QTest::addColumn<int>("rows");
    const QString firm = u"Codice|Ragione sociale|Telefono 1|Telefono 2"_s;
    QTest::newRow("suppliers: those under A") << suppliers << u"Gestione fornitori"_s << firm << 1;
    QTest::newRow("carriers") << u"actRicercaVettori"_s << u"Gestione vettori"_s << firm << 0;
    QTest::newRow("types") << u"actRicercaTipiTrasporto"_s << u"Gestione tipi di trasporto"_s << u"Tipo di trasporto"_s
                           << 0;
    QTest::newRow("reasons") << u"actRicercaCausaliTrasporto"_s << u"Gestione causali di trasporto"_s
                             << u"Causale di trasporto"_s << 0;
    QTest::newRow("movements: those of the period")
        << movements << u"Gestione movimenti di magazzino"_s << u"Data|Codice|Descrizione|Categoria|Q.tà"_s << 2;
    QTest::newRow("delivery notes") << notes << u"Gestione D.d.T. di scarico"_s << u"N.|Data|Codice|Ragione sociale"_s
                                    << 0;
    QTest::newRow("receipts") << u"actRicercaBolleCarico"_s << u"Gestione bolle di carico"_s
                              << u"N.|Data|Codice|Ragione sociale|Totale"_s << 0;
}

void TestLists::columnsAndFirstRows()
{
    QFETCH(QString, action);
    QFETCH(QString, caption);
    QFETCH(QString, headers);
    QFETCH(int, rows);
    for (const QDate &date : {QDate(2026, 2, 1), QDate(2026, 3, 31), QDate(2026, 1, 31)})
        insertMovement(date, u"X"_s, 1);
    for (const char *table : {"DDT_SCARICO", "BOLLE_CARICO"})
        insertDocument(QString::fromLatin1(table), 1, QDate(2026, 1, 1), u"C"_s, u"N"_s);
    const ui::SearchForm *list = this->list(action);
    QCOMPARE(list->windowTitle(), caption);
    const QAbstractItemModel *model = test::gridOf(list)->model();
    QStringList shown;
    for (int column = 0; column < model->columnCount(); ++column)
        shown.append(model->headerData(column, Qt::Horizontal).toString());
    QCOMPARE(shown.join(u'|'), headers);
    QCOMPARE(model->rowCount(), rows);
    QCOMPARE(list->selectedKey(), -1);
}

void TestLists::rowsAreShown_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("row");
    QTest::newRow("movements") << movements << u"05/03/2026|TRA-0018|Articolo TRA-0018|%1|-1.234,50"_s;
    QTest::newRow("delivery notes") << notes << u"7|05/03/2026|C7|Dell'Orto"_s;
    QTest::newRow("receipts") << u"actRicercaBolleCarico"_s << u"7|05/03/2026|C7|Dell'Orto|€ 1.234,50"_s;
}

void TestLists::rowsAreShown()
{
    QFETCH(QString, action);
    QFETCH(QString, row);
    const QDate date(2026, 3, 5);
    insertMovement(date, u"TRA-0018"_s, -1234.5);
    for (const char *table : {"DDT_SCARICO", "BOLLE_CARICO"})
        insertDocument(QString::fromLatin1(table), 7, date, u"C7"_s, u"Dell'Orto"_s, 1234.5);
    const ui::SearchForm *list = this->list(action);
    test::trigger(list, u"actCerca"_s);
    const QTableView *grid = test::gridOf(list);
    QCOMPARE(grid->model()->rowCount(), 1);
    QStringList shown;
    for (int column = 0; column < grid->model()->columnCount(); ++column)
        shown.append(grid->model()->index(0, column).data().toString());
    const QString category =
        place().lines(u"SELECT CATEGORIA FROM CATEGORIE_ANA_MAGA WHERE IDCATEGORIA_ANA_MAGA = 1"_s).value(0);
    QCOMPARE(shown.join(u'|'), row.contains(u"%1"_s) ? row.arg(category) : row);
}

void TestLists::filters_data()
{
    QTest::addColumn<QString>("filters");
    QTest::addColumn<QString>("codes");
    QTest::newRow("code, anywhere and without case") << u"txtCodice=z-1"_s << u"Z-1|XZ-10"_s;
    QTest::newRow("name") << u"txtRagioneSociale=OFFICINE"_s << u"Z-1|Z-2"_s;
    QTest::newRow("both") << u"txtCodice=Z-2|txtRagioneSociale=officine"_s << u"Z-2"_s;
    QTest::newRow("both, nothing has both") << u"txtCodice=XZ|txtRagioneSociale=officine"_s << QString();
    QTest::newRow("quote") << u"txtRagioneSociale=D'A"_s << u"Z-2"_s;
    QTest::newRow("quote alone") << u"txtCodice='"_s << QString();
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

void TestLists::enterInAFilterSearches_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("filter");
    QTest::newRow("supplier code") << suppliers << u"txtCodice"_s;
    QTest::newRow("supplier name") << suppliers << u"txtRagioneSociale"_s;
    QTest::newRow("note name") << notes << u"txtRagioneSociale"_s;
    QTest::newRow("year") << notes << u"txtAnno"_s;
    QTest::newRow("first date") << movements << u"txtDataDal"_s;
    QTest::newRow("last date") << movements << u"txtDataAl"_s;
}

void TestLists::enterInAFilterSearches()
{
    QFETCH(QString, action);
    QFETCH(QString, filter);
    const ui::SearchForm *list = this->list(action);
    const int before = test::gridOf(list)->model()->rowCount();
    insertSupplier(u"NUOVO"_s, u"Zeta"_s);
    insertMovement(QDate(2026, 3, 1), u"X"_s, 1);
    insertDocument(u"DDT_SCARICO"_s, 1, QDate(2026, 1, 1), u"C"_s, u"N"_s);
    QTest::keyClick(test::control<QWidget>(list, filter), Qt::Key_Return);
    QVERIFY(test::gridOf(list)->model()->rowCount() > before);
}

void TestLists::restoringEmptiesTheFiltersOnly()
{
    insertDocument(u"DDT_SCARICO"_s, 4, QDate(2025, 5, 5), u"C"_s, u"Nome"_s);
    const ui::SearchForm *list = this->list(notes);
    search(list, u"txtCodice=c|txtRagioneSociale=nome|txtAnno=2025"_s);
    QCOMPARE(test::columnTexts(test::gridOf(list), u"N."_s), QStringList({u"4"_s}));
    test::press(list, u"cmdRipristina"_s);
    QCOMPARE(test::shown(list, u"txtCodice"_s) + test::shown(list, u"txtRagioneSociale"_s), QString());
    QCOMPARE(test::shown(list, u"txtAnno"_s), u"2026"_s);
    QCOMPARE(test::columnTexts(test::gridOf(list), u"N."_s), QStringList({u"4"_s}));
}

void TestLists::letters()
{
    insertSupplier(u"MIN"_s, u"dado e bullone"_s);
    insertSupplier(u"DENTRO"_s, u"Casa D"_s);
    const ui::SearchForm *list = this->list(suppliers);
    const auto namesUnder = [&](const QString &letter) {
        const QList<QToolButton *> buttons =
            test::control<QWidget>(list, u"BarraRicerca"_s)->findChildren<QToolButton *>();
        for (QToolButton *button : buttons) {
            if (button->text() == letter)
                button->click();
        }
        return test::columnTexts(test::gridOf(list), u"Ragione sociale"_s);
    };
    QCOMPARE(namesUnder(u"D"_s), QStringList({u"dado e bullone"_s, u"Dell'Orto Sementi S.r.l."_s}));
    QCOMPARE(namesUnder(u"Q"_s), QStringList());
    QCOMPARE(namesUnder(u"*"_s).size(), 17);
    // The filters have no part in it.
    test::retype(list, u"txtCodice"_s, u"nessuno"_s);
    QCOMPARE(namesUnder(u"A"_s), QStringList({u"Acciaierie Brentane S.p.A."_s}));
}

void TestLists::order_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("texts");
    QTest::newRow("suppliers by name") << u"FORNITORI"_s << u"RAGIONESOCIALE"_s << u"alfa|Beta|gamma"_s;
    QTest::newRow("carriers by code") << u"VETTORI"_s << u"CODICE"_s << u"alfa|Beta|gamma"_s;
    QTest::newRow("types") << u"TIPI_TRASPORTO"_s << u"TIPO_TRASPORTO"_s << u"alfa|Beta|gamma"_s;
    QTest::newRow("reasons") << u"CAUSALI_TRASPORTO"_s << u"CAUSALE_TRASPORTO"_s << u"alfa|Beta|gamma"_s;
}

void TestLists::order()
{
    QFETCH(QString, table);
    QFETCH(QString, column);
    QFETCH(QString, texts);
    place().database().run(u"DELETE FROM "_s + table);
    const bool firm = column == u"RAGIONESOCIALE" || column == u"CODICE";
    int number = 9;
    for (const QString &text : {u"gamma"_s, u"alfa"_s, u"Beta"_s}) {
        QVariantMap values;
        if (firm)
            values = {{u"CODICE"_s, QString::number(--number)}, {u"RAGIONESOCIALE"_s, QString::number(--number)}};
        values.insert(column, text);
        test::insertInto(place().database(), table, values);
    }
    const ui::SearchForm *list = this->list(test::registerOf(table).listAction);
    search(list, {});
    const int shown = column == u"RAGIONESOCIALE" ? 1 : 0;
    QStringList listed;
    for (int row = 0; row < 3; ++row)
        listed.append(test::gridOf(list)->model()->index(row, shown).data().toString());
    QCOMPARE(listed.join(u'|'), texts);
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
}

// The arrow in a header would lie about a list that stands in the order of its query.
void TestLists::searchOrdersAnew()
{
    for (const int number : {1, 3, 2})
        insertDocument(u"BOLLE_CARICO"_s, number, QDate(2026, 1, number), u"A"_s, u"N"_s);
    const ui::SearchForm *list = this->list(u"actRicercaBolleCarico"_s);
    search(list, {});
    clickHeader(test::gridOf(list), u"N."_s);
    search(list, {});
    QCOMPARE(test::columnTexts(test::gridOf(list), u"N."_s), QStringList({u"3"_s, u"2"_s, u"1"_s}));
    QVERIFY(!test::gridOf(list)->horizontalHeader()->isSortIndicatorShown());
    clickHeader(test::gridOf(list), u"N."_s);
    QCOMPARE(test::columnTexts(test::gridOf(list), u"N."_s), QStringList({u"1"_s, u"2"_s, u"3"_s}));
}

void TestLists::documentsOfAYear()
{
    QFETCH(QString, action);
    QFETCH(QString, table);
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
    QCOMPARE(found(u"txtAnno=2024"_s), QString());
    QCOMPARE(found(u"txtRagioneSociale=d'a"_s), u"9"_s);
    QCOMPARE(found(u"txtRagioneSociale=%"_s), u"10"_s);
    QCOMPARE(found(u"txtCodice=c1"_s), u"10"_s);
    QCOMPARE(found(u"txtCodice=c1|txtRagioneSociale=ferramenta|txtAnno=2025"_s), u"11"_s);
}

void TestLists::deletingADocument()
{
    QFETCH(QString, action);
    QFETCH(QString, table);
    insertDocument(table, 1, QDate(2026, 1, 1), u"C"_s, u"Uno"_s);
    insertDocument(table, 2, QDate(2026, 1, 2), u"C"_s, u"Due"_s);
    const ui::SearchForm *list = this->list(action);
    search(list, {});
    // Of another workstation, so not listed yet.
    insertDocument(table, 3, QDate(2026, 1, 3), u"C"_s, u"Tre"_s);
    test::selectRow(test::gridOf(list), u"Uno"_s);
    for (const core::Answer answer : {core::Answer::No, core::Answer::Yes}) {
        QCOMPARE(test::columnTexts(test::gridOf(list), u"Ragione sociale"_s), QStringList({u"Due"_s, u"Uno"_s}));
        place().messages.expectQuestion(u"Confermare l'eliminazione?"_s, answer);
        test::trigger(list, u"actElimina"_s);
        QCOMPARE(place().messages.verify(), QStringList());
    }
    QCOMPARE(test::columnTexts(test::gridOf(list), u"Ragione sociale"_s), QStringList({u"Due"_s}));
    QCOMPARE(place().lines(u"SELECT NUMERO FROM %1 ORDER BY 1"_s.arg(table)), QStringList({u"2"_s, u"3"_s}));
}

void TestLists::movementPeriod_data()
{
    QTest::addColumn<QDate>("today");
    QTest::addColumn<QString>("period");
    QTest::newRow("January") << QDate(2026, 1, 31) << u"01/12/2025-31/01/2026"_s;
    QTest::newRow("leap February") << QDate(2028, 2, 29) << u"01/01/2028-29/02/2028"_s;
    QTest::newRow("after a short month") << QDate(2026, 3, 31) << u"01/02/2026-31/03/2026"_s;
    QTest::newRow("December") << QDate(2026, 12, 1) << u"01/11/2026-31/12/2026"_s;
}

void TestLists::movementPeriod()
{
    QFETCH(QDate, today);
    QFETCH(QString, period);
    core::setClock([today] { return QDateTime(today, QTime(12, 0)); });
    const ui::SearchForm *list = this->list(movements);
    const auto shown = [list] { return test::shown(list, u"txtDataDal"_s) + u'-' + test::shown(list, u"txtDataAl"_s); };
    QCOMPARE(shown(), period);
    for (const char *name : {"txtDataDal", "txtDataAl"})
        test::control<QDateEdit>(list, QString::fromLatin1(name))->setDate(QDate(2020, 6, 6));
    test::press(list, u"cmdRipristina"_s);
    QCOMPARE(shown(), period);
}

void TestLists::movementsOfThePeriod()
{
    for (int day = 9; day <= 13; ++day)
        insertMovement(QDate(2026, 2, day), u"G%1"_s.arg(day), 1);
    const ui::SearchForm *list = this->list(movements);
    test::control<QDateEdit>(list, u"txtDataDal"_s)->setDate(QDate(2026, 2, 10));
    test::control<QDateEdit>(list, u"txtDataAl"_s)->setDate(QDate(2026, 2, 12));
    search(list, {});
    QCOMPARE(test::columnTexts(test::gridOf(list), u"Codice"_s), QStringList({u"G12"_s, u"G11"_s, u"G10"_s}));
    test::control<QDateEdit>(list, u"txtDataAl"_s)->setDate(QDate(2026, 2, 9));
    search(list, {});
    QCOMPARE(test::gridOf(list)->model()->rowCount(), 0);
}

void TestLists::negativeQuantitiesAreRed()
{
    insertMovement(QDate(2026, 3, 3), u"SCA"_s, -1);
    insertMovement(QDate(2026, 3, 2), u"NIL"_s, 0);
    insertMovement(QDate(2026, 3, 1), u"CAR"_s, 2);
    const QTableView *grid = test::gridOf(this->list(movements));
    const int column = test::columnOf(grid, u"Q.tà"_s);
    QList<bool> red;
    for (int row = 0; row < grid->model()->rowCount(); ++row) {
        const QModelIndex cell = grid->model()->index(row, column);
        red.append(cell.data(Qt::ForegroundRole).value<QColor>() == QColor(Qt::red));
        QVERIFY(cell.data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
    }
    QCOMPARE(red, QList<bool>({true, false, false}));
}

void TestLists::waysToOpen_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"command", "enter", "double click"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void TestLists::waysToOpen()
{
    QFETCH(QString, way);
    const ui::SearchForm *list = this->list(suppliers);
    test::press(list, u"cmdCerca"_s);
    QTableView *grid = test::gridOf(list);
    test::selectRow(grid, u"Inox Casa S.r.l."_s);
    const int key = list->selectedKey();
    if (way == u"command") {
        test::trigger(list, u"actModifica"_s);
    } else if (way == u"enter") {
        QTest::keyClick(grid, Qt::Key_Return);
    } else {
        const QPoint row = grid->visualRect(grid->currentIndex()).center();
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, row);
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, row);
    }
    test::settle();
    const auto *form = place().window().findChild<ui::EntryForm *>(u"MMGInserimentoFornitori"_s);
    QVERIFY(form && form->isVisible());
    QCOMPARE(form->IdRecord(), key);
    QCOMPARE(test::shown(form, u"txtRagioneSociale"_s), u"Inox Casa S.r.l."_s);
    QCOMPARE(test::flagsOf(form), u"stored"_s);
}

void TestLists::nothingSelectedOpensNothing()
{
    const ui::SearchForm *list = this->list(suppliers);
    for (const char *command : {"actModifica", "actElimina"})
        test::trigger(list, QString::fromLatin1(command));
    QTest::keyClick(test::gridOf(list), Qt::Key_Return);
    QVERIFY(!place().window().findChild<ui::EntryForm *>());
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

void TestLists::savedRecordShowsAtTheNextSearch()
{
    const ui::SearchForm *list = this->list(suppliers);
    test::trigger(list, u"actNuovo"_s);
    const ui::EntryForm *form = test::openEntry(place(), u"actInserimentoFornitori"_s);
    QCOMPARE(test::flagsOf(form), u"new"_s);
    test::retype(form, u"txtRagioneSociale"_s, u"Abete Legnami"_s);
    test::trigger(form, u"actSalva"_s);
    QCOMPARE(test::gridOf(list)->model()->rowCount(), 1);
    search(list, u"txtRagioneSociale=abete"_s);
    QCOMPARE(test::columnTexts(test::gridOf(list), u"Codice"_s), QStringList({u"FOR000016"_s}));
}

void TestLists::failedSearchIsTold()
{
    const ui::SearchForm *list = this->list(u"actRicercaTipiTrasporto"_s);
    test::trigger(list, u"actCerca"_s);
    place().module().ModADOConn->setStatementHook([](const QString &) { throw core::Error(u"Rete caduta"_s); });
    place().messages.expectError(u"Rete caduta"_s);
    test::trigger(list, u"actCerca"_s);
    place().module().ModADOConn->setStatementHook({});
    QCOMPARE(place().messages.verify(), QStringList());
    QCOMPARE(test::gridOf(list)->model()->rowCount(), 3);
}

static const test::Registered<TestLists> registered;

#include "test_lists.moc"
