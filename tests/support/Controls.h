#pragma once
#include <QString>
#include <QWidget>

class QAbstractItemView;
class QTableView;

/// Working the program's windows as a user does. What is not there throws core::Error.
namespace test {

/// Lets happen what the event loop would do between two actions of the user.
void settle();

[[noreturn]] void missing(const QString &name);

template <typename Control>
Control *control(const QObject *owner, const QString &name)
{
    auto *found = owner->findChild<Control *>(name);
    if (!found)
        missing(name);
    return found;
}

/// Presses the key of each character of `text`, also of those that no plain key stands for.
void type(QWidget *control, const QString &text);
/// Presses one key, with its modifiers, in whatever has the focus.
void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Presses one key in the modal window before all others; where there is none, it goes to nobody.
void pressInModal(Qt::Key key);
/// Presses the keys of `keys` one by one in whatever has the focus: "\n" is Enter, "\t" Tab, "^" Ctrl+Enter.
void strike(const QString &keys);
/// Types over what stands in the control; the focus stays.
void retype(QWidget *control, const QString &text);
void retype(const QWidget *owner, const QString &control, const QString &text);
/// Turns to the control's page, types over what stands in it and leaves it with Tab, where Tab leads on.
void typeOver(QWidget *control, const QString &text);

/// Runs a form's or the module's command; a disabled one does nothing.
void trigger(const QObject *owner, const QString &action);
void press(const QWidget *owner, const QString &button);
/// What a label, an edit or a list control named `name` shows.
QString shown(const QWidget *owner, const QString &name);

/// Ends what ui::Look::use() began.
void useToolkitsLook();

/// From now on the running test fails when the grid's model breaks a rule of models.
void checkModel(QAbstractItemView *grid);

/// Selects the row of a grid that shows `text` in some column, and brings it into view.
void selectRow(QTableView *grid, const QString &text);
int columnOf(const QTableView *grid, const QString &header);
QString cellText(const QTableView *grid, int row, const QString &header);
/// A column's texts from top to bottom.
QStringList columnTexts(const QTableView *grid, const QString &header);
/// Opens the cell's editor by the keyboard, types over what stands in it and ends with Enter (Ctrl+Enter in a memo).
void typeIntoCell(QTableView *grid, int row, const QString &header, const QString &text);

} // namespace test
