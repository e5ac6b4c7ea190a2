#include "tests/support/Controls.h"

#include "platform/core/Error.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace test {

void settle()
{
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

void useToolkitsLook()
{
    QApplication::setStyle(u"Fusion"_s);
    QApplication::setPalette({});
}

void missing(const QString &name)
{
    throw core::Error(u"There is no \"%1\"."_s.arg(name));
}

void type(QWidget *control, const QString &text)
{
    for (const QChar character : text) {
        const char latin = character.toLatin1();
        if (character == u'\n') {
            QTest::keyClick(control, Qt::Key_Return);
        } else if (latin >= ' ' && latin < 0x7f) {
            QTest::keyClick(control, latin);
        } else {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, character);
            QApplication::sendEvent(control, &press);
        }
    }
}

void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (!QApplication::focusWidget())
        missing(u"focus"_s);
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    settle();
}

void pressInModal(Qt::Key key)
{
    if (const QWidget *modal = QApplication::activeModalWidget())
        QTest::keyClick(modal->windowHandle(), key);
}

void strike(const QString &keys)
{
    for (const QChar key : keys) {
        if (key == u'\t')
            pressKey(Qt::Key_Tab);
        else if (key == u'^')
            pressKey(Qt::Key_Return, Qt::ControlModifier);
        else
            type(QApplication::focusWidget(), key);
        settle();
    }
}

void retype(QWidget *control, const QString &text)
{
    control->setFocus();
    QTest::keyClick(control, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(control, Qt::Key_Delete);
    type(control, text);
}

void retype(const QWidget *owner, const QString &name, const QString &text)
{
    retype(control<QWidget>(owner, name), text);
    settle();
}

void typeOver(QWidget *control, const QString &text)
{
    for (QWidget *page = control; page->parentWidget(); page = page->parentWidget()) {
        // The pages of a tab widget lie in a stack of its own.
        if (auto *pages = qobject_cast<QTabWidget *>(page->parentWidget()->parentWidget()))
            pages->setCurrentWidget(page);
    }
    control->window()->activateWindow();
    control->setFocus();
    settle();
    retype(control, text);
    const auto *memo = qobject_cast<QPlainTextEdit *>(control);
    if (!memo || memo->tabChangesFocus())
        QTest::keyClick(control, Qt::Key_Tab);
    settle();
}

void trigger(const QObject *owner, const QString &action)
{
    control<QAction>(owner, action)->trigger();
    settle();
}

void press(const QWidget *owner, const QString &button)
{
    control<QAbstractButton>(owner, button)->click();
    settle();
}

QString shown(const QWidget *owner, const QString &name)
{
    auto *found = control<QWidget>(owner, name);
    for (const char *property : {"currentText", "plainText", "text"}) {
        if (const QVariant value = found->property(property); value.isValid())
            return value.toString();
    }
    missing(name);
}

void checkModel(QAbstractItemView *grid)
{
    using Tester = QAbstractItemModelTester;
    if (!grid->findChild<Tester *>())
        new Tester(grid->model(), Tester::FailureReportingMode::QtTest, grid);
}

void selectRow(QTableView *grid, const QString &text)
{
    for (int row = 0; row < grid->model()->rowCount(); ++row) {
        for (int column = 0; column < grid->model()->columnCount(); ++column) {
            if (grid->model()->index(row, column).data().toString() == text) {
                grid->selectRow(row);
                grid->scrollTo(grid->model()->index(row, 0));
                return;
            }
        }
    }
    missing(text);
}

int columnOf(const QTableView *grid, const QString &header)
{
    for (int column = 0; column < grid->model()->columnCount(); ++column) {
        if (grid->model()->headerData(column, Qt::Horizontal).toString() == header)
            return column;
    }
    missing(header);
}

QString cellText(const QTableView *grid, int row, const QString &header)
{
    return grid->model()->index(row, columnOf(grid, header)).data().toString();
}

QStringList columnTexts(const QTableView *grid, const QString &header)
{
    QStringList texts;
    for (int row = 0; row < grid->model()->rowCount(); ++row)
        texts.append(cellText(grid, row, header));
    return texts;
}

void typeIntoCell(QTableView *grid, int row, const QString &header, const QString &text)
{
    const QModelIndex cell = grid->model()->index(row, columnOf(grid, header));
    // A command may have opened the cell already.
    if (grid->currentIndex() != cell || !grid->findChild<QWidget *>(u"editorRiga"_s)) {
        grid->setFocus();
        settle();
        grid->setCurrentIndex(cell);
        QTest::keyClick(grid, Qt::Key_F2);
    }
    auto *editor = control<QWidget>(grid, u"editorRiga"_s);
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(editor, Qt::Key_Delete);
    type(editor, text);
    const bool memo = qobject_cast<QPlainTextEdit *>(editor) != nullptr;
    QTest::keyClick(editor, Qt::Key_Return, memo ? Qt::ControlModifier : Qt::NoModifier);
    settle();
}

} // namespace test
