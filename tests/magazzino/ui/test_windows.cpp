#include "host/help/HostChapters.h"
#include "host/help/ManualWindow.h"
#include "platform/ui/Help.h"
#include "platform/ui/MessageBoxes.h"
#include "tests/support/Fixtures.h"

namespace {

QPointer<host::ManualWindow> shownManual()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        auto *manual = qobject_cast<host::ManualWindow *>(window);
        if (manual && manual->isVisible())
            return manual;
    }
    return {};
}

QString chapterShown(const host::ManualWindow &manual)
{
    return test::control<QListWidget>(&manual, u"lstCapitoli"_s)->currentItem()->text().trimmed();
}

} // namespace

/// Windows as they are drawn: where they open, what Enter answers in them, which one follows when one closes. And F1,
/// and what stands under "?".
class TestWindows : public test::AtShownWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    void enterLosesNothing()
    {
        ui::installMessageBoxes();
        QWidget *form = open(u"actInserimentoFornitori"_s);
        auto *name = test::control<QLineEdit>(form, u"txtRagioneSociale"_s);
        test::type(name, u"Rossi"_s);
        enterInNextBox();
        test::trigger(form, u"actNuovo"_s);
        QCOMPARE(name->text(), u"Rossi"_s);
        enterInNextBox();
        QVERIFY(!core::confirmDeletion(form));
        enterInNextBox();
        QVERIFY(core::confirm(form, u"Salvarlo ora?"_s));
        const test::Document note(place(), test::deliveryNote());
        note.addArticle(u"TRA-0018"_s, u"2"_s, u"10"_s);
        enterInNextBox();
        note.trigger(u"actEliminaRiga"_s);
        QCOMPARE(note.grid()->model()->rowCount(), 1);
        note.form().SetModified(false);
    }

    void boxOfTheHiddenModuleOpensOverTheActiveWindow()
    {
        ui::installMessageBoxes();
        place().window().move(300, 200);
        QRect box;
        enterInNextBox([&box](QWidget &shown) { box = shown.frameGeometry(); });
        core::warn(&place().module(), u"Attenzione"_s);
        QVERIFY(place().window().frameGeometry().contains(box));
    }

    void selectionOpensInTheMiddleOfTheScreen()
    {
        for (const QString &action : {u"actModSelezionaUM"_s, u"actStampaSottoscortaRiordino"_s}) {
            QPoint middle;
            place().dialogs.expect([&middle](QDialog &dialog) {
                middle = dialog.frameGeometry().center();
                dialog.reject();
            });
            if (action == u"actModSelezionaUM"_s)
                ui::runModal(place().module().selectionDialog(action));
            else
                open(action);
            const QPoint off = middle - place().window().screen()->availableGeometry().center();
            QVERIFY2(off.manhattanLength() < 20, qPrintable(action)); // its frame is unknown when it is placed
        }
    }

    void firstWindowFitsTheScreen()
    {
        const QTemporaryDir folder;
        host::MainWindow window(folder.filePath(u"nuovo.ini"_s));
        window.show();
        QVERIFY(window.screen()->availableGeometry().contains(window.geometry()));
    }

    // What stands lowest in a form, at 1366x768 and at that with 150 %.
    void totalsAreVisible()
    {
        const QSize whole(1366, 700); // of the main window, without its frame
        const QSize part(910, 460);
        const QString total = u"lblTotaleDocumento"_s;
        for (const auto &[action, last, size] : {std::tuple(u"actInserimentoBolleCarico"_s, total, whole),
                                                 {u"actInserimentoFattureAccompagnatorie"_s, total, whole},
                                                 {u"actInserimentoMovimentiMagazzino"_s, u"txtNote"_s, whole},
                                                 {u"actInserimentoBolleCarico"_s, total, part},
                                                 {u"actInserimentoFattureAccompagnatorie"_s, total, part}}) {
            place().window().resize(size);
            test::settle();
            QCOMPARE(place().window().size(), size);
            QWidget *form = open(action);
            test::settle();
            const auto *lowest = test::control<QWidget>(form, last);
            QVERIFY2(lowest->visibleRegion().boundingRect() == lowest->rect(), qPrintable(action));
            form->parentWidget()->close();
            test::settle();
        }
    }

    // Whether windows are freed or hidden.
    void closingActivatesTheOneUsedBefore()
    {
        for (const QString &last : {u"actRicercaBolleCarico"_s, u"actRicercaFornitori"_s}) {
            QWidget *first = open(u"actStampaInventario"_s);
            QWidget *second = open(u"actRicercaVettori"_s);
            QWidget *third = open(last);
            open(u"actStampaInventario"_s);
            open(last);
            QCOMPARE(activeForm(), third);
            test::trigger(third, u"actChiudi"_s);
            QCOMPARE(activeForm(), first);
            test::trigger(first, u"actChiudi"_s);
            QCOMPARE(activeForm(), second);
            test::trigger(second, u"actChiudi"_s);
        }
    }

    // As tabs or lying freely, each user's own.
    void arrangementIsRemembered()
    {
        const QTemporaryDir folder;
        host::MainWindow window(folder.filePath(u"finestre.ini"_s));
        auto *area = window.findChild<QMdiArea *>();
        for (const auto &[user, isFree, changes] : {std::tuple(u"MARIO"_s, false, true),
                                                    {u"A/B"_s, false, false},
                                                    {u"MARIO"_s, true, true},
                                                    {u"MARIO"_s, false, false}}) {
            window.showSession(user, {});
            QCOMPARE(area->viewMode(), isFree ? QMdiArea::SubWindowView : QMdiArea::TabbedView);
            if (changes)
                test::trigger(&window, u"actFinestreLibere"_s);
        }
    }

    // Tabs of hidden windows are no tabs; what filled the area as a tab lies in it with its own size.
    void tabsFillTheAreaAndComeFree()
    {
        QWidget *list = open(u"actRicercaFornitori"_s);
        QWidget *print = open(u"actStampaInventario"_s);
        QCOMPARE(print->parentWidget()->size(), area()->viewport()->size());
        const auto *tabs = test::control<QTabBar>(area(), u"tabFinestre"_s);
        test::trigger(open(u"actInserimentoBolleCarico"_s), u"actChiudi"_s);
        QCOMPARE(print->parentWidget()->size(), area()->viewport()->size());
        test::trigger(list, u"actChiudi"_s);
        test::trigger(open(u"actRicercaVettori"_s), u"actChiudi"_s);
        QCOMPARE(std::tuple(tabs->isTabVisible(0), tabs->isTabVisible(1)), std::tuple(false, true));
        QVERIFY(!list->isVisible());
        open(u"actRicercaFornitori"_s);
        QCOMPARE(std::tuple(tabs->isTabVisible(0), tabs->currentIndex()), std::tuple(true, 0));
        test::trigger(&place().window(), u"actFinestreLibere"_s);
        QVERIFY(!list->parentWidget()->isMaximized() && !print->parentWidget()->isMaximized());
        QCOMPARE(activeForm(), list);
        test::trigger(&place().window(), u"actFinestreLibere"_s);
        QVERIFY(list->parentWidget()->isMaximized());
    }

    void arrangingFreesTheTabs()
    {
        const QWidget *list = open(u"actRicercaFornitori"_s);
        const QWidget *print = open(u"actStampaInventario"_s);
        auto *menu = test::control<QMenu>(&place().window(), u"mnFinestre"_s);
        Q_EMIT menu->aboutToShow();
        for (QAction *action : menu->actions()) {
            if (action->text() == u"&Affianca"_s)
                action->trigger();
        }
        test::settle();
        QCOMPARE(area()->viewMode(), QMdiArea::SubWindowView);
        QVERIFY(!list->parentWidget()->geometry().intersects(print->parentWidget()->geometry()));
    }

    void hiddenListComesBackAsItWas()
    {
        test::trigger(&place().window(), u"actFinestreLibere"_s);
        QWidget *list = open(u"actRicercaFornitori"_s);
        list->parentWidget()->move(30, 40);
        auto *name = test::control<QLineEdit>(list, u"txtRagioneSociale"_s);
        test::type(name, u"a"_s);
        QTest::keyClick(name, Qt::Key_Return);
        QTest::keyClick(name, Qt::Key_Down);
        const auto *grid = gridOf(*list);
        const QStringList names = test::columnTexts(grid, u"Ragione sociale"_s);
        test::trigger(list, u"actChiudi"_s);
        QVERIFY(!list->isVisible());
        QCOMPARE(open(u"actRicercaFornitori"_s), list);
        QVERIFY(list->isVisible());
        QCOMPARE(name->text(), u"a"_s);
        QCOMPARE(test::columnTexts(grid, u"Ragione sociale"_s), names);
        QCOMPARE(grid->selectionModel()->selectedRows().value(0).row(), 0);
        QCOMPARE(list->parentWidget()->pos(), QPoint(30, 40));
    }

    void initTestCase() { host::addHostChapters(); }

    void everyChapterIsInTheManual()
    {
        const host::ManualWindow manual(nullptr);
        const QStringList titles = manual.chapters();
        for (auto [window, chapter] : ui::helpChapters().asKeyValueRange())
            QVERIFY2(titles.contains(chapter), qPrintable(window + u": "_s + chapter));
    }

    void f1OpensTheChapterOfTheWindow()
    {
        open(u"actInserimentoDdTScarico"_s)->activateWindow();
        test::settle();
        QTest::keyClick(place().window().windowHandle(), Qt::Key_F1);
        test::settle();
        const QPointer<host::ManualWindow> manual = shownManual();
        QVERIFY(manual);
        QCOMPARE(chapterShown(*manual), u"Merce in uscita: il D.d.T. di scarico"_s);
        // The heading stands at the top of what is seen, and its pictures are there and fit.
        auto *text = test::control<host::ManualText>(manual, u"txtManuale"_s);
        QCOMPARE(text->cursorForPosition({10, 10}).block().text(), chapterShown(*manual));
        const auto picture =
            text->document()->resource(QTextDocument::ImageResource, QUrl(u"images/ddt-righe.png"_s)).value<QImage>();
        QVERIFY(!picture.isNull() && picture.width() < text->viewport()->width());
        manual->close();
    }

    // A dialog keeps the main window from taking keys, and would keep the manual from it, too.
    void f1WorksInDialogs()
    {
        host::installHelpKey(&place().window());
        place().dialogs.expect([](QDialog &dialog) {
            QTest::keyClick(&dialog, Qt::Key_F1);
            test::settle();
            const QPointer<host::ManualWindow> manual = shownManual();
            QVERIFY(manual && manual->parentWidget() == &dialog);
            QCOMPARE(chapterShown(*manual), u"Importare da CSV"_s);
            dialog.reject();
        });
        test::trigger(&place().commands(), u"actImporta"_s);
    }

    void informationIsCopied()
    {
        place().dialogs.expect([](QDialog &dialog) {
            test::press(&dialog, u"cmdCopia"_s);
            dialog.reject();
        });
        test::trigger(&place().window(), u"actInformazioni"_s);
        const QString copied = QGuiApplication::clipboard()->text();
        for (const QString &part : {u"Versione: 1."_s, u"Moduli caricati: Modulo Magazzino"_s, u"Firebird: "_s})
            QVERIFY2(copied.contains(part), qPrintable(copied));
    }

private:
    QMdiArea *area() const { return place().window().findChild<QMdiArea *>(); }
    QWidget *activeForm() const
    {
        const QMdiSubWindow *window = area()->activeSubWindow();
        return window ? window->widget() : nullptr;
    }
    /// Presses Enter in the next box that is drawn, after `look` at it.
    void enterInNextBox(const std::function<void(QWidget &)> &look = {})
    {
        QTimer::singleShot(0, this, [look] {
            QWidget *box = QApplication::activeModalWidget();
            if (look)
                look(*box);
            QTest::keyClick(box, Qt::Key_Return);
        });
    }
};

static const test::Registered<TestWindows> registered;

#include "test_windows.moc"
