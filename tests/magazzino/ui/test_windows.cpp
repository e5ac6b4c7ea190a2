#include "host/ui/MainWindow.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/ui/EntryForm.h"
#include "platform/ui/MessageBoxes.h"
#include "tests/support/Controls.h"
#include "tests/support/TestMain.h"
#include "tests/support/Workplace.h"

#include <QLineEdit>
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

private:
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

static const test::Registered<TestWindows> registered;

#include "test_windows.moc"
