#pragma once
#include "tests/support/QtWarnings.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/ScriptedMessages.h"

namespace tour {

/// Tells what the tour does and compares what comes out, leaves pictures, and answers the program's boxes and dialogs
/// from scripts. What differs, a box that nobody expected and a warning of Qt are counted as failures.
class Visit
{
public:
    /// Pictures and files go to `folder`, which must be there.
    explicit Visit(const QString &folder);
    ~Visit();
    Visit(const Visit &) = delete;
    Visit &operator=(const Visit &) = delete;

    const QString &folder() const { return folder_; }
    /// The path of the tour's file with this name.
    QString file(const QString &name) const;

    /// Says what comes next. After something unexpected nothing comes next: throws core::Error.
    void tell(const QString &text);
    /// Counts one comparison and says how it went.
    void check(const QString &what, const QString &actual, const QString &expected);
    void check(const QString &what, bool holds);
    /// Runs a form's or module's command; one that cannot be run is a failure.
    void trigger(const QObject *owner, const QString &action);

    /// Shows the main window as a screen of 1366x768, the smallest in use, shows it below its title bar.
    void show(QWidget &mainWindow);
    /// "NN-name.png" of `window`.
    void picture(QWidget *window, const QString &name);
    /// "NN-name-dimensione-minima.png" of a child window's form at the smallest size it can get; `suffix` stands before
    /// the extension.
    void pictureAtSmallestSize(QWidget *form, const QString &name, const QString &suffix = {});

    /// Counts a failure and says what it is.
    void fail(const QString &text);
    /// Tells the totals; true when nothing failed, also none of what is still expected.
    bool finish();

    test::ScriptedMessages messages;
    test::ScriptedDialogs dialogs;

private:
    core::Answer answer(const core::Message &message);
    void pass(const QString &text);
    bool takeProblems();

    QString folder_;
    int pictures_ = 0;
    int passed_ = 0;
    int failed_ = 0;
    core::MessageHandler scripted_;
    test::QtWarnings warnings_;
};

} // namespace tour
