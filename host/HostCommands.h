#pragma once
#include <QHash>
#include <QObject>
#include <QPointer>

#include <functional>

class QAction;
class QWidget;
namespace data {
class Connection;
}
namespace ui {
class EntryForm;
}

namespace host {

class MainWindow;
struct RegisterSpec;

/// The host's own commands: registers, users, settings. Puts them into the main window's menus and keeps the forms they
/// open: a command run twice shows one window.
class HostCommands : public QObject
{
    Q_OBJECT

public:
    /// Works on `connection`; owned by `window`.
    HostCommands(MainWindow &window, data::Connection &connection);
    ~HostCommands() override;

    /// A command of the host by its name; null when there is none.
    QAction *action(const QString &name) const;
    /// Shows the form of an action and returns it; null when it was refused.
    QWidget *openForm(const QString &actionName);

private:
    struct Command
    {
        QString name;
        QString caption;
        QString menu;                      ///< object name of the host's menu; none while empty
        std::function<QWidget *()> create; ///< makes a form, or
        std::function<void()> run = {};    ///< does the work
        bool administratorsOnly = false;
    };

    void add(const Command &command);
    void addRegisters();
    void addSettings();
    void addRegister(const RegisterSpec &spec, const QString &menu);
    void execute(const Command &command);
    ui::EntryForm &entryForm(const QString &actionName);

    MainWindow &window_;
    data::Connection &connection_;
    QHash<QString, QPointer<QWidget>> forms_; // by action
};

} // namespace host
