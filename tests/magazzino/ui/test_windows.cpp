#include "host/ui/MainWindow.h"
#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/MMGModSelezionaBase.h"
#include "platform/ui/EntryForm.h"
#include "platform/ui/MessageBoxes.h"
#include "tests/support/Documents.h"
#include "tests/support/TestMain.h"

#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>
#include <QTableView>
#include <QTimer>

using namespace Qt::StringLiterals;

/// Windows as they are drawn: where they open, what Enter answers in them, which one follows when one closes.
class TestWindows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        workplace_ = std::make_unique<test::Workplace>();
        workplace_->window().show();
        QVERIFY(QTest::qWaitForWindowActive(&workplace_->window()));
    }
    void cleanup() { workplace_.reset(); }

    void enterLosesNothing();
    void boxOfTheHiddenModuleOpensOverTheActiveWindow();
    void selectionOpensInTheMiddleOfTheScreen();
    void firstWindowFitsTheScreen();
    void totalsAreVisible_data();
    void totalsAreVisible();
    void closingActivatesTheOneUsedBefore();
    void hiddenListComesBackAsItWas();
    void givingUpClearsAHiddenForm();

private:
    QWidget *open(const QString &action) const { return workplace_->module().openForm(action); }
    QMdiArea *area() const { return workplace_->window().findChild<QMdiArea *>(); }
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

    std::unique_ptr<test::Workplace> workplace_;
};

void TestWindows::enterLosesNothing()
{
    ui::installMessageBoxes();
    QWidget *form = workplace_->module().openForm(u"actInserimentoFornitori"_s);
    auto *name = test::control<QLineEdit>(form, u"txtRagioneSociale"_s);
    test::type(name, u"Rossi"_s);
    enterInNextBox();
    test::trigger(form, u"actNuovo"_s);
    QCOMPARE(name->text(), u"Rossi"_s);
    enterInNextBox();
    QVERIFY(!core::confirmDeletion(form));
    enterInNextBox();
    QVERIFY(core::confirm(form, u"Salvarlo ora?"_s));
    const test::Document note(*workplace_, test::deliveryNote());
    note.addArticle(u"TRA-0018"_s, u"2"_s, u"10"_s);
    enterInNextBox();
    note.trigger(u"actEliminaRiga"_s);
    QCOMPARE(note.grid()->model()->rowCount(), 1);
    note.form().SetModified(false);
}

void TestWindows::boxOfTheHiddenModuleOpensOverTheActiveWindow()
{
    ui::installMessageBoxes();
    workplace_->window().move(300, 200);
    QRect box;
    enterInNextBox([&box](QWidget &shown) { box = shown.frameGeometry(); });
    core::warn(&workplace_->module(), u"Attenzione"_s);
    QVERIFY(workplace_->window().frameGeometry().contains(box));
}

void TestWindows::selectionOpensInTheMiddleOfTheScreen()
{
    for (const QString &action : {u"actModSelezionaUM"_s, u"actStampaSottoscortaRiordino"_s}) {
        QPoint middle;
        workplace_->dialogs.expect([&middle](QDialog &dialog) {
            middle = dialog.frameGeometry().center();
            dialog.reject();
        });
        if (action == u"actModSelezionaUM"_s)
            ui::runModal(workplace_->module().selectionDialog(action));
        else
            open(action);
        const QPoint off = middle - workplace_->window().screen()->availableGeometry().center();
        QVERIFY2(off.manhattanLength() < 20, qPrintable(action)); // its frame is unknown when it is placed
    }
}

void TestWindows::firstWindowFitsTheScreen()
{
    const QTemporaryDir folder;
    host::MainWindow window(folder.filePath(u"nuovo.ini"_s));
    window.show();
    QVERIFY(window.screen()->availableGeometry().contains(window.geometry()));
}

void TestWindows::totalsAreVisible_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QSize>("size");   // of the main window, without its frame
    QTest::addColumn<QString>("last"); // what stands lowest
    const QString last = u"lblTotaleDocumento"_s;
    for (const QString &action : {u"actInserimentoBolleCarico"_s, u"actInserimentoFattureAccompagnatorie"_s}) {
        QTest::addRow("%s at 1366x768", qPrintable(action)) << action << QSize(1366, 700) << last;
        QTest::addRow("%s at 1366x768, 150%%", qPrintable(action)) << action << QSize(910, 460) << last;
    }
    QTest::newRow("movement") << u"actInserimentoMovimentiMagazzino"_s << QSize(1366, 700) << u"txtNote"_s;
}

void TestWindows::totalsAreVisible()
{
    QFETCH(QString, action);
    QFETCH(QSize, size);
    QFETCH(QString, last);
    workplace_->window().resize(size);
    test::settle();
    QCOMPARE(workplace_->window().size(), size);
    const QWidget *form = open(action);
    test::settle();
    const auto *total = test::control<QWidget>(form, last);
    QCOMPARE(total->visibleRegion().boundingRect(), total->rect());
}

// Whether windows are freed or hidden.
void TestWindows::closingActivatesTheOneUsedBefore()
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

void TestWindows::hiddenListComesBackAsItWas()
{
    QWidget *list = open(u"actRicercaFornitori"_s);
    list->parentWidget()->move(30, 40);
    auto *name = test::control<QLineEdit>(list, u"txtRagioneSociale"_s);
    test::type(name, u"a"_s);
    QTest::keyClick(name, Qt::Key_Return);
    QTest::keyClick(name, Qt::Key_Down);
    const auto *grid = test::control<QTableView>(list, u"GridRisultati"_s);
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

void TestWindows::givingUpClearsAHiddenForm()
{
    const QString question = u"Ci sono delle modifiche non salvate.\n\rContinuare comunque?"_s;
    auto *form = qobject_cast<ui::EntryForm *>(open(u"actInserimentoFornitori"_s));
    auto *name = test::control<QLineEdit>(form, u"txtRagioneSociale"_s);
    test::type(name, u"Rossi"_s);
    for (const core::Answer answer : {core::Answer::No, core::Answer::Yes}) {
        workplace_->messages.expectQuestion(question, answer);
        test::trigger(form, u"actChiudi"_s);
        QCOMPARE(form->isVisible(), answer == core::Answer::No);
    }
    QCOMPARE(open(u"actInserimentoFornitori"_s), form);
    QCOMPARE(name->text(), QString());
    QVERIFY(form->NewRecord() && !form->Modified());
    QVERIFY(test::control<QLineEdit>(form, u"txtCodice"_s)->text().startsWith(u"FOR"_s));
}

static const test::Registered<TestWindows> registered;

#include "test_windows.moc"
