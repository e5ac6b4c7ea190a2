#include "host/registers/BarcodeGrid.h"
#include "platform/ui/Icons.h"
#include "platform/ui/LetterBar.h"
#include "platform/ui/Look.h"
#include "tests/support/Fixtures.h"

#include <QPixmapCache>

#include <malloc.h>

namespace {

QPalette darkPalette()
{
    QPalette dark(QColor(55, 60, 66), QColor(49, 54, 59));
    dark.setColor(QPalette::Base, QColor(35, 38, 41));
    dark.setColor(QPalette::AlternateBase, QColor(42, 46, 50));
    dark.setColor(QPalette::Text, QColor(239, 240, 241));
    dark.setColor(QPalette::WindowText, QColor(239, 240, 241));
    return dark;
}

// What cannot be read: text that needs more room than its control has. A label that wraps or shortens itself says so.
QStringList cutTexts(const QWidget &form)
{
    QStringList cut;
    for (const QWidget *control : form.findChildren<QWidget *>()) {
        const auto *label = qobject_cast<const QLabel *>(control);
        const auto *button = qobject_cast<const QAbstractButton *>(control);
        const bool shortens = control->inherits("ui::ElidedLabel") || (label && label->wordWrap());
        if ((!label && !button) || shortens || !control->isVisible())
            continue;
        const QString text = label ? label->text() : button->text();
        const QStringList lines = text.split(u'\n');
        int needed = 0;
        for (const QString &line : lines)
            needed = std::max(needed, control->fontMetrics().horizontalAdvance(QString(line).remove(u'&')));
        if (needed > control->width() || (!text.isEmpty() && control->fontMetrics().height() > control->height() + 1))
            cut.append(text);
    }
    return cut;
}

} // namespace

/// How the program looks: what is said can be read, in both themes and in large letters.
class TestLook : public test::AtWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    static void initTestCase() { ui::Look::use(); }
    static void cleanupTestCase() { test::useToolkitsLook(); }

    void everyColourCanBeRead_data()
    {
        test::columns<QPalette>();
        QTest::newRow("the program's own") << QApplication::palette();
        ui::Look::useOwnColours(ui::Scheme::Dark);
        QTest::newRow("the program's own, dark") << QApplication::palette();
        ui::Look::useOwnColours(ui::Scheme::Light);
        QTest::newRow("dark") << darkPalette();
        QTest::newRow("black") << QPalette(Qt::black);
    }
    void everyColourCanBeRead()
    {
        const auto [palette] = test::row<QPalette>();
        const QPalette refused = ui::refusedPalette(palette);
        const auto of = [&palette = palette](QPalette::ColorRole role) { return palette.color(role); };
        QList<std::pair<QColor, QColor>> pairs = {
            {of(QPalette::WindowText), of(QPalette::Window)},
            {of(QPalette::Text), of(QPalette::Base)},
            {of(QPalette::Text), of(QPalette::AlternateBase)},
            {of(QPalette::ButtonText), of(QPalette::Button)},
            {refused.color(QPalette::Text), of(QPalette::Base)},
            {refused.color(QPalette::WindowText), of(QPalette::Window)},
            {refused.color(QPalette::HighlightedText), refused.color(QPalette::Highlight)},
            {ui::negativeText(palette), of(QPalette::Base)},
            {ui::negativeText(palette), of(QPalette::AlternateBase)},
            {ui::quietText(palette), of(QPalette::Base)},
            {ui::quietText(palette), of(QPalette::Window)},
            {ui::warningText, ui::warningGround},
            {ui::warningText, ui::warningRowGround},
            {ui::unreadableText, ui::unreadableGround}};
        // What a desktop chooses besides is its own affair.
        if (QByteArray(QTest::currentDataTag()).startsWith("the program"))
            pairs += {{of(QPalette::HighlightedText), of(QPalette::Highlight)},
                      {of(QPalette::Link), of(QPalette::Window)},
                      {of(QPalette::ToolTipText), of(QPalette::ToolTipBase)},
                      {of(QPalette::PlaceholderText), of(QPalette::Base)}};
        for (const auto &[text, ground] : std::as_const(pairs)) {
            const QByteArray told = QStringLiteral("%1 on %2").arg(text.name(), ground.name()).toUtf8();
            QVERIFY2(ui::contrast(text, ground) >= ui::leastContrast, told.constData());
        }
    }

    // In the evening the desktop turns dark, under open windows.
    void openWindowsFollowTheTheme()
    {
        ui::useIconTheme();
        const QWidget *form = open(u"actInserimentoMovimentiMagazzino"_s);
        const QWidget *article = place().commands().openForm(u"actInserimentoArticoli"_s);
        auto *barcodes = test::control<host::BarcodeGrid>(article, u"gridCodiciBarre"_s);
        barcodes->setBarcodes({{u"8001234567890"_s, 1}}); // its check digit does not fit
        const auto back = qScopeGuard([] {
            ui::Look::useOwnColours(ui::Scheme::Light);
            ui::useIconTheme();
        });
        ui::Look::useOwnColours(ui::Scheme::Dark);
        ui::useIconTheme();
        test::settle();
        for (const QWidget *window : {form, article}) {
            for (const QWidget *control : window->findChildren<QWidget *>()) {
                const bool typed = qobject_cast<const QLineEdit *>(control) != nullptr;
                const QPalette palette = control->palette();
                const QColor ground = palette.color(typed ? QPalette::Base : QPalette::Window);
                const QColor text = palette.color(typed ? QPalette::Text : QPalette::WindowText);
                QVERIFY2(control->window()->isHidden() || ground.lightness() < 128, qPrintable(control->objectName()));
                QVERIFY2(!control->isEnabled() || ui::contrast(text, ground) >= ui::leastContrast,
                         qPrintable(control->objectName()));
            }
        }
        QVERIFY(ui::contrast(barcodes->item(0, 0)->foreground().color(), barcodes->palette().color(QPalette::Base)) >=
                ui::leastContrast);
        QVERIFY(place().window().area().background().color().lightness() < 128);
        const QIcon icon = test::control<QAction>(form, u"actSalva"_s)->icon();
        QVERIFY(icon.pixmap(16)
                    .toImage()
                    .scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                    .pixelColor(0, 0)
                    .lightness() > 128);
    }

    // A day is hundreds of windows; what the style keeps of each would fill megabytes and be drawn anew every time.
    void openingAgainKeepsNothing_data()
    {
        test::cases({u"actInserimentoDdTScarico"_s, u"actInserimentoBolleCarico"_s,
                     u"actInserimentoFattureAccompagnatorie"_s, u"actInserimentoMovimentiMagazzino"_s,
                     u"actRicercaBolleCarico"_s, u"actStampaInventario"_s});
    }
    void openingAgainKeepsNothing()
    {
        const auto openOften = [&](int times) {
            for (int time = 0; time < times; ++time) {
                auto *form = dynamic_cast<ui::ChildForm *>(open(test::currentCase()));
                test::settle();
                form->closeForm();
                test::settle();
            }
            return mallinfo2().uordblks;
        };
        constexpr int times = 20;
        constexpr size_t most = 8192; // bytes for each
        QPixmapCache::clear();
        const size_t before = openOften(times);
        const size_t after = openOften(times);
        QVERIFY2(after < before + times * most, qPrintable(QString::number((after - before) / times)));
    }

    // Twice the usual size, in the smallest usual window: pages scroll, nothing is cut.
    void largeLettersAreWhole()
    {
        const QFont usual = QApplication::font();
        const auto back = qScopeGuard([&] { QApplication::setFont(usual); });
        QFont large = usual;
        large.setPointSizeF(2 * usual.pointSizeF());
        QApplication::setFont(large);
        place().window().resize(1366, 740);
        for (const QString &action :
             {u"actInserimentoBolleCarico"_s, u"actInserimentoDdTScarico"_s, u"actInserimentoFattureAccompagnatorie"_s,
              u"actInserimentoFornitori"_s, u"actInserimentoMovimentiMagazzino"_s, u"actStampaInventario"_s}) {
            const QWidget *form = open(action);
            test::settle();
            QCOMPARE(action + cutTexts(*form).join(u'|'), action);
        }
        for (const QString &action : {u"actInserimentoArticoli"_s, u"actInserimentoClienti"_s, u"actAzienda"_s})
            QCOMPARE(action + cutTexts(*place().commands().openForm(action)).join(u'|'), action);
        // Columns of a declared width grow with the letters.
        test::insertInto(database(), u"DDT_SCARICO"_s,
                         {{u"NUMERO"_s, 1}, {u"ANNO"_s, 2026}, {u"DATA"_s, QDate(2026, 10, 28)}});
        const ui::SearchForm *list = openList(u"actRicercaDdTScarico"_s);
        test::press(list, u"cmdCerca"_s);
        const QTableView *grid = gridOf(*list);
        const int date = test::columnOf(grid, u"Data"_s);
        QVERIFY(grid->columnWidth(date) > grid->fontMetrics().horizontalAdvance(test::cellText(grid, 0, u"Data"_s)));
    }

    void saveIsToldUntilTheNextChange()
    {
        ui::EntryForm *form = openEntry(u"actInserimentoTipiTrasporto"_s);
        const auto *told = test::control<QLabel>(form, u"lblSalvato"_s);
        test::retype(form, u"txtTipoTrasporto"_s, u"Corriere"_s);
        QCOMPARE(told->text(), QString());
        test::trigger(form, u"actSalva"_s);
        QCOMPARE(told->text(), u"Salvato alle 10:30"_s);
        QTest::keyClick(test::control<QLineEdit>(form, u"txtTipoTrasporto"_s), Qt::Key_E);
        QCOMPARE(told->text(), QString());
        form->SetModified(false);
    }

    // The letter that fills the list, until something else does.
    void letterShownIsMarked()
    {
        const ui::SearchForm *list = openList(u"actRicercaFornitori"_s);
        auto *letters = list->findChild<ui::LetterBar *>();
        const auto marked = [letters] {
            QString all;
            for (const QToolButton *button : letters->findChildren<QToolButton *>())
                all += button->isChecked() ? button->text() : QString();
            return all;
        };
        letters->press(u'B');
        letters->press(u'F');
        QCOMPARE(marked(), u"F"_s);
        test::press(list, u"cmdCerca"_s);
        QCOMPARE(marked(), QString());
    }

    // Inputs of one page begin below each other, whatever section they stand in and whether a save requires them.
    void inputsBeginAtTheSamePlace()
    {
        const QWidget *form = open(u"actInserimentoBolleCarico"_s);
        const auto left = [form](const QString &name) {
            return test::control<QWidget>(form, name)->mapTo(form, QPoint()).x();
        };
        const int place = left(u"txtCausaleTrasporto"_s);
        for (const QString &name : {u"txtAspettoBeni"_s, u"txtPeso"_s, u"lblRagioneSociale"_s})
            QCOMPARE(left(name), place);
    }
};

static const test::Registered<TestLook> registered;

#include "test_look.moc"
