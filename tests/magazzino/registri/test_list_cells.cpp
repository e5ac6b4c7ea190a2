#include "platform/ui/Look.h"
#include "platform/ui/ResultGrid.h"
#include "tests/support/Controls.h"
#include "tests/support/TestMain.h"

#include <QHeaderView>

using namespace Qt::StringLiterals;
using ui::ListColumn;

namespace {

using Change = std::function<void(QTableView &)>;

const QList<ListColumn> columns = {
    {u"Codice"_s, u"CODICE"_s, 60},
    {u"Nome"_s, u"NOME"_s, 150},
    {u"Data"_s, u"DATA"_s, 80, ListColumn::Width::Pixels, ListColumn::Display::Date},
    {u"Prezzo"_s, u"PREZZO"_s, 91, ListColumn::Width::Pixels, ListColumn::Display::Currency, true}};

data::Rows madeRows()
{
    const QStringList names = {u"Müller & figli"_s,
                               u"Un nome che è molto più lungo di quanto la sua colonna è larga"_s,
                               u"riga\nsotto riga"_s,
                               u"שלום, 12 ffi"_s,
                               u"\tAV To"_s,
                               {},
                               u" fine "_s};
    QList<QVariantList> rows;
    for (int i = 0; i < 40; ++i)
        rows.append({i, u"A%1"_s.arg(i * i), names[i % names.size()], QDate(2026, 1, 1).addDays(i),
                     i % 9 ? QVariant((i - 12) * 1234.567) : QVariant()});
    return {{{u"ID"_s}, {u"CODICE"_s}, {u"NOME"_s}, {u"DATA"_s}, {u"PREZZO"_s, 2}}, rows};
}

// The list's model in a view that leaves all drawing to Qt.
std::unique_ptr<QTableView> drawnByQt(ui::ResultGrid &grid)
{
    auto view = std::make_unique<QTableView>();
    view->setModel(&grid.rows());
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setAlternatingRowColors(true);
    view->setWordWrap(false);
    view->verticalHeader()->hide();
    view->verticalHeader()->setDefaultSectionSize(grid.verticalHeader()->defaultSectionSize());
    view->horizontalHeader()->setHighlightSections(false);
    view->horizontalHeader()->setMinimumSectionSize(grid.horizontalHeader()->minimumSectionSize());
    return view;
}

QImage pictureOf(QTableView &view, double ratio)
{
    QImage picture(view.viewport()->size() * ratio, QImage::Format_RGB32);
    picture.setDevicePixelRatio(ratio);
    view.viewport()->render(&picture);
    return picture;
}

} // namespace

/// A list draws its cells itself, faster than the toolkit does and to the same pixels.
class TestListCells : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    static void initTestCase() { ui::Look::use(); }
    static void cleanupTestCase() { test::useToolkitsLook(); }

    void looksAsDrawnByQt_data()
    {
        test::columns<Change>();
        const auto row = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
        row("as opened", [](QTableView &) {});
        row("a row selected", [](QTableView &view) { view.selectRow(1); });
        row("disabled", [](QTableView &view) { view.setEnabled(false); });
        row("scrolled to the end", [](QTableView &view) { view.scrollToBottom(); });
        row("few rows", [](QTableView &view) {
            for (int i = 4; i < 40; ++i)
                view.setRowHidden(i, true);
        });
        row("columns moved and narrow", [](QTableView &view) {
            view.horizontalHeader()->moveSection(3, 0);
            view.setColumnWidth(1, 40);
        });
        row("larger letters", [](QTableView &view) {
            QFont font = view.font();
            font.setPointSizeF(1.3 * font.pointSizeF());
            view.setFont(font);
        });
        row("dark", [](QTableView &) { ui::Look::useOwnColours(ui::Scheme::Dark); });
    }
    void looksAsDrawnByQt()
    {
        const auto back = qScopeGuard([] { ui::Look::useOwnColours(ui::Scheme::Light); });
        ui::ResultGrid grid(u"ID"_s, columns, nullptr);
        grid.setRows(madeRows());
        const std::unique_ptr<QTableView> plain = drawnByQt(grid);
        for (QTableView *view : {static_cast<QTableView *>(&grid), plain.get()}) {
            view->resize(480, 300);
            view->show();
        }
        test::settle();
        // Before and behind a change, so that it finds what was kept of other colours and widths.
        const auto [change] = test::row<Change>();
        for (const Change &step : {Change([](QTableView &) {}), change}) {
            step(grid);
            step(*plain);
            for (int i = 0; i < columns.size(); ++i)
                plain->setColumnWidth(i, grid.columnWidth(i));
            test::settle();
            for (const double ratio : {1.0, 1.0, 1.5, 2.0})
                QCOMPARE(pictureOf(grid, ratio), pictureOf(*plain, ratio));
        }
    }
};

static const test::Registered<TestListCells> registered;
#include "test_list_cells.moc"
