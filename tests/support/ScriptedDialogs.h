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
    ScriptedDialogs(const ScriptedDialogs &) = delete;
    ScriptedDialogs &operator=(const ScriptedDialogs &) = delete;

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

} // namespace test
