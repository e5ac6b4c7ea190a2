#include "tests/support/ScriptedDialogs.h"

#include "tests/support/Controls.h"

#include <QApplication>
#include <QDialog>
#include <QTest>

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

} // namespace test
