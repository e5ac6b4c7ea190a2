#pragma once
#include "platform/core/Messages.h"

#include <QDialog>
#include <QList>
#include <QString>

#include <functional>

class QAction;
class QTableView;

namespace host {

/// Works the program as a user would, through its actions, dialogs and controls, tells what it does, compares what
/// comes out and leaves a picture of every window. It knows forms and controls by their names only.
class TourDriver
{
public:
    explicit TourDriver(const QString &folder);
    ~TourDriver();
    TourDriver(const TourDriver &) = delete;
    TourDriver &operator=(const TourDriver &) = delete;

    const QString &folder() const { return folder_; }

    /// Says what comes next. After an unexpected message box nothing comes next: throws core::Error.
    void tell(const QString &text);
    /// Counts one comparison and says how it went.
    void check(const QString &what, const QString &actual, const QString &expected);
    void check(const QString &what, bool holds);
    /// "NN-name.png" of `window`.
    void picture(QWidget *window, const QString &name);

    /// "NN-name-dimensione-minima.png" of a child window's form.
    void pictureAtSmallestSize(QWidget *form, const QString &name);

    /// The next message box must have this title and hold this text; it gets `answer`.
    void expectMessage(const QString &title, const QString &text, core::Answer answer);
    /// The next modal dialog is worked by `use`, which must close it.
    void expectDialog(const std::function<void(QDialog &)> &use);
    /// The next modal dialog shows the progress of some work and goes away by itself.
    void expectProgress();

    /// Runs a form's or module's command.
    void trigger(QObject *owner, const QString &action);
    /// The control of `owner` with this name; a missing one ends the tour.
    template <typename Control>
    Control *control(QWidget *owner, const QString &name)
    {
        auto *found = owner->findChild<Control *>(name);
        if (!found)
            missing(name);
        return found;
    }
    void press(QWidget *owner, const QString &button);
    /// Selects the row of a grid that shows `text` in some column.
    void selectRow(QTableView *grid, const QString &text);
    /// Types `text` into a cell, as after a key press on it, and ends the edit with Enter.
    void typeIntoCell(QTableView *grid, int row, const QString &header, const QString &text);
    QString cellText(QTableView *grid, int row, const QString &header) const;

    int passed() const { return passed_; }
    int failed() const { return failed_; }
    /// Counts what is still expected and never came.
    void finish();

private:
    struct ExpectedMessage
    {
        QString title;
        QString text;
        core::Answer answer;
    };

    core::Answer answer(const core::Message &message);
    int run(QDialog &dialog);
    [[noreturn]] void missing(const QString &name);
    int columnOf(QTableView *grid, const QString &header) const;
    void fail(const QString &text);

    QString folder_;
    int pictures_ = 0;
    int passed_ = 0;
    int failed_ = 0;
    bool interrupted_ = false; // by a message box or dialog that nobody expected
    QList<ExpectedMessage> messages_;
    QList<std::function<void(QDialog &)>> dialogs_;
};

} // namespace host
