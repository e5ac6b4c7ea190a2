#pragma once
#include "platform/data/Connection.h"
#include "platform/ui/CommandRegistry.h"
#include "platform/ui/RegisterSpec.h"

namespace host {

class MainWindow;

/// The host's own commands: registers, users, settings, in the main window's menus.
class HostCommands : public ui::CommandRegistry
{
    Q_OBJECT

public:
    /// Works on `connection`; owned by `window`.
    HostCommands(MainWindow &window, data::Connection &connection);

private:
    /// Adds the command to the host's menu of that object name.
    void addTo(const QString &menu, const ui::ActionSpec &spec);
    void addRegisters();
    void addSettings();
    void addUsers();
    void addRegister(const ui::RegisterSpec &spec, const QString &menu);
    ui::ActionSpec listOf(const ui::RegisterSpec &spec);

    MainWindow &window_;
    data::Connection &connection_;
};

} // namespace host
