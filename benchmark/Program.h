#pragma once
#include "host/Application.h"

#include <functional>

class QDialog;
class QWidget;
class TMMGInserimentoDocumento;

/// The program as a user has it, worked from outside.
namespace bench {

class Program
{
public:
    /// Opens database and main window; the module follows with startModule().
    explicit Program(const data::DatabaseAddress &address, std::unique_ptr<data::Connection> opened = {});
    ~Program();
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    host::Session &session() const { return *session_; }

    /// The form that an action opens, shown.
    template <typename Form>
    Form &form(const QString &action) const
    {
        return dynamic_cast<Form &>(openForm(action));
    }
    /// Presses a form's command or button and chooses the row with `text` in the dialog that comes; the `code` goes
    /// into the dialog's code filter before.
    void choose(const QWidget &form, const QString &command, const QString &text, const QString &code = {});

private:
    static QWidget &openForm(const QString &action);

    std::unique_ptr<host::Session> session_;
    std::function<void(QDialog &)> dialogUse_;
};

/// Starts the module in the program that is there.
void startModule();
/// Closes the action's form if it is open, without questions.
void forget(const QString &action);
/// Lets windows be laid out and painted.
void settle();

} // namespace bench
