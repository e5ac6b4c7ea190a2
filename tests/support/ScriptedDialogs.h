#pragma once
#include "platform/ui/Dialogs.h"

#include <QList>
#include <QStringList>

namespace test {

/// Works the program's modal dialogs from a script while it lives. A dialog that nobody expects, one that its script
/// leaves open and an expected one that never comes are problems.
class ScriptedDialogs
{
public:
    using Use = std::function<void(QDialog &)>;

    ScriptedDialogs();
    /// Fails the running test for problems that verify() did not hand out.
    ~ScriptedDialogs();
    Q_DISABLE_COPY(ScriptedDialogs)

    /// The next dialog, already shown, is worked by `use`, which must close it.
    void expect(Use use) { script_.append(std::move(use)); }

    /// What went wrong so far, then forgotten; compare it with QStringList().
    QStringList verify();

private:
    int run(QDialog &dialog);

    QList<Use> script_;
    QStringList problems_;
    ui::ModalRunner previous_;
};

/// Chooses the row with `text` of a selection dialog and presses "OK". Before, it searches where there is a search, and
/// presses a `letter` of the letter bar; `look` sees the dialog with the row selected.
ScriptedDialogs::Use choosing(const QString &text, const QString &letter = {}, const ScriptedDialogs::Use &look = {});
/// The same after a search for the code `typed`, by Enter in its filter.
ScriptedDialogs::Use searching(const QString &typed, const QString &text, const ScriptedDialogs::Use &look = {});
/// Presses the button, which must close the dialog.
ScriptedDialogs::Use pressing(const QString &button);
/// Waits until a dialog that shows the progress of some work goes away by itself; at most a minute.
ScriptedDialogs::Use waiting();

} // namespace test
