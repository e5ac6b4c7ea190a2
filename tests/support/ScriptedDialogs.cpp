#include "tests/support/ScriptedDialogs.h"

#include "tests/support/Controls.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace test {

ScriptedDialogs::ScriptedDialogs()
    : previous_(ui::setModalRunner([this](QDialog &dialog) { return run(dialog); }))
{
}

ScriptedDialogs::~ScriptedDialogs()
{
    ui::setModalRunner(previous_);
    const QStringList left = verify();
    if (!left.isEmpty())
        QTest::qFail(qPrintable(left.join(u"; "_s)), __FILE__, __LINE__);
}

int ScriptedDialogs::run(QDialog &dialog)
{
    QWidget *before = QApplication::activeWindow();
    dialog.show();
    settle();
    if (script_.isEmpty())
        problems_.append(u"unexpected dialog: "_s + dialog.windowTitle());
    else
        script_.takeFirst()(dialog);
    if (dialog.isVisible()) {
        problems_.append(u"dialog left open: "_s + dialog.windowTitle());
        dialog.reject();
    }
    // As the desktop does; shortcuts reach the active window only.
    QApplication::setActiveWindow(before);
    return dialog.result();
}

QStringList ScriptedDialogs::verify()
{
    QStringList all = std::exchange(problems_, {});
    if (const qsizetype missing = std::exchange(script_, {}).size(); missing > 0)
        all.append(u"%1 dialogs never came"_s.arg(missing));
    return all;
}

namespace {

void takeRow(QDialog &dialog, const QString &text, const ScriptedDialogs::Use &look)
{
    selectRow(control<QTableView>(&dialog, u"gridRisultati"_s), text);
    if (look)
        look(dialog);
    press(&dialog, u"cmdOk"_s);
}

} // namespace

ScriptedDialogs::Use choosing(const QString &text, const QString &letter, const ScriptedDialogs::Use &look)
{
    return [text, letter, look](QDialog &dialog) {
        if (dialog.findChild<QAbstractButton *>(u"actCerca"_s))
            press(&dialog, u"actCerca"_s);
        const QList<QToolButton *> letters = dialog.findChildren<QToolButton *>();
        for (QToolButton *button : letters) {
            if (button->text() == letter)
                button->click();
        }
        takeRow(dialog, text, look);
    };
}

ScriptedDialogs::Use searching(const QString &typed, const QString &text, const ScriptedDialogs::Use &look)
{
    return [typed, text, look](QDialog &dialog) {
        auto *filter = control<QLineEdit>(&dialog, u"txtCodice"_s);
        filter->clear();
        type(filter, typed);
        QTest::keyClick(filter, Qt::Key_Return);
        takeRow(dialog, text, look);
    };
}

ScriptedDialogs::Use pressing(const QString &button)
{
    return [button](QDialog &dialog) { press(&dialog, button); };
}

ScriptedDialogs::Use waiting()
{
    return [](const QDialog &dialog) {
        constexpr int patience = 60'000; // milliseconds
        // One that stays open is reported when it comes back to run().
        std::ignore = QTest::qWaitFor([&dialog] { return !dialog.isVisible(); }, patience);
    };
}

} // namespace test
