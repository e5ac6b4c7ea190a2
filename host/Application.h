#pragma once
#include "platform/data/Connection.h"
#include "platform/data/ConnectionString.h"

#include <QApplication>
#include <memory>
#include <optional>

namespace host {

class HostCommands;
class MainWindow;

/// What the command line asked for.
struct StartOptions
{
    QString database;       ///< file, or HOST[/PORT]:FILE; empty for the account's own
    QString user;           ///< proposed at the login; empty for the one of the last time
    bool empty = false;     ///< a new database gets no demonstration data
    bool upgrade = false;   ///< start, bring the schema up to date, end
    bool selfCheck = false; ///< look whether everything that belongs to the program is there, end
    QString tourFolder;     ///< run the guided tour into this folder
};

/// Where what forms hold unsaved is kept, below the folder of the account's data; see ui::Drafts.
QString draftFolder(const QString &dataFolder);

/// A running program without its event loop: database open, main window made, modules started.
class Session
{
public:
    /// Starts on a database that opens, on the connection that the login has `opened` if there is one. Throws
    /// core::Error.
    Session(const data::DatabaseAddress &address, const QString &user, const QString &settingsFile,
            std::unique_ptr<data::Connection> opened = {});
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /// The main window, not yet shown.
    MainWindow &window() const { return *window_; }
    /// The session's own connection; modules make theirs.
    data::Connection &connection() const { return *connection_; }
    /// The commands of the host.
    HostCommands &commands() const { return *commands_; }

private:
    void keepDrafts(const QString &folder, const data::DatabaseAddress &address, const QString &user);

    std::unique_ptr<MainWindow> window_;
    data::Connection *connection_ = nullptr; // owned by the window, where modules look for it
    HostCommands *commands_ = nullptr;       // owned by the window, too, but gone before it
};

/// The user whose session starts when none is named; a new database always has it.
inline const QString administrator = QStringLiteral("AMMINISTRATORE");

/// Chooses Qt's platform without windows for a command line that shows none, and where there is no display: without one
/// the application object would end the program. Before that object is made.
void choosePlatform(int argc, char *argv[]);

/// Takes other accounts' rights on the data folder and its daily backups, and removes there what programs that were
/// killed have left behind; the folder is made.
void protectData(const QString &folder);

/// Style, language, log and the embedded engine's lock folder; once, before anything else.
void prepareProgram(QApplication &application);

/// The whole program; returns its exit code, 0 for success.
int runApplication(QApplication &application);

} // namespace host
