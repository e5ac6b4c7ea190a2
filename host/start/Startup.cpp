#include "host/start/Startup.h"

#include "host/DatabaseSetup.h"
#include "host/backup/BackupCommands.h"
#include "host/schema/DemoData.h"
#include "host/start/DatabaseMemory.h"
#include "host/start/FileCommands.h"
#include "host/start/Opening.h"
#include "host/start/StartDialogs.h"
#include "host/ui/MainWindow.h"
#include "host/users/PasswordDialogs.h"
#include "host/users/Users.h"
#include "platform/core/Error.h"
#include "platform/core/Messages.h"
#include "platform/data/Connection.h"
#include "platform/data/DatabaseFile.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/TextPrompt.h"

#include <QApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace host {

namespace {

data::DatabaseAddress commandLineDatabase(const StartOptions &options)
{
    data::DatabaseAddress address =
        options.database.isEmpty() ? defaultDatabase() : data::DatabaseAddress::parse(options.database);
    if (address.isEmbedded()) {
        address.file = QFileInfo(address.file).absoluteFilePath();
        return address;
    }
    // Firebird's own variables; a password never stands on the command line, where others could read it.
    address.user = qEnvironmentVariable("ISC_USER", address.user);
    address.password = qEnvironmentVariable("ISC_PASSWORD");
    return address;
}

void requireOpening(const data::DatabaseAddress &address)
{
    if (const QString problem = openProblem(address); !problem.isEmpty())
        throw core::Error(problem);
}

bool isMissing(const data::DatabaseAddress &address)
{
    return data::checkDatabase(address).failure == data::OpenFailure::Missing;
}

// The database of the command line, created where that was asked for.
Opening fromCommandLine(const StartOptions &options)
{
    Opening opening{commandLineDatabase(options)};
    const bool mayCreate = options.database.isEmpty() || options.empty;
    if (mayCreate && isMissing(opening.database)) {
        createHostDatabase(opening.database, !options.empty);
        if (!options.empty)
            opening.firstRows = FirstRows::Demo;
    }
    return opening;
}

void insertFirstRows(FirstRows rows, data::Connection &connection)
{
    if (rows == FirstRows::Demo)
        insertDemoWarehouseData(connection);
    if (rows == FirstRows::CommonTables)
        insertCommonWarehouseTables(connection);
}

class Startup
{
public:
    Startup(const StartOptions &options, const QString &folder)
        : options_(options)
        , folder_(folder)
        , memory_(folder)
    {
    }

    void run();

private:
    std::optional<Opening> first();
    std::optional<Opening> ask();
    std::optional<Opening> demo();
    bool askServerPassword(data::DatabaseAddress &address);
    QString login(const data::DatabaseAddress &address);
    std::optional<Opening> work(const Opening &opening);
    std::optional<Opening> workAndBackUp(const Opening &opening);

    StartOptions options_;
    QString folder_;
    DatabaseMemory memory_;
    bool worked_ = false; // somebody logged in and may have changed something
};

std::optional<Opening> Startup::first()
{
    if (!options_.database.isEmpty() || options_.empty)
        return fromCommandLine(options_);
    if (const auto last = memory_.last())
        return Opening{*last};
    if (QFileInfo::exists(defaultDatabase().file))
        return Opening{defaultDatabase()};
    return ask();
}

std::optional<Opening> Startup::demo()
{
    Opening opening{defaultDatabase()};
    const ui::WaitCursor wait;
    if (isMissing(opening.database)) {
        createHostDatabase(opening.database, true);
        opening.firstRows = FirstRows::Demo;
    }
    memory_.remember(opening.database, false);
    return opening;
}

// Until something can be opened or the user gives up.
std::optional<Opening> Startup::ask()
{
    for (;;) {
        const FirstStart choice = askFirstStart();
        if (choice == FirstStart::GiveUp)
            return {};
        std::optional<Opening> opening;
        core::guarded(nullptr, [&] {
            if (choice == FirstStart::Demo)
                opening = demo();
            if (choice == FirstStart::NewFirm) {
                if (const auto firm = askNewFirm(nullptr, folder_)) {
                    memory_.remember(firm->database, firm->keepPassword);
                    opening = Opening{firm->database, firm->commonTables ? FirstRows::CommonTables : FirstRows::None};
                }
            }
            if (choice == FirstStart::Open) {
                if (const auto chosen = askDatabase(nullptr, folder_)) {
                    memory_.remember(chosen->address, chosen->keepPassword);
                    opening = Opening{chosen->address};
                }
            }
        });
        if (opening)
            return opening;
    }
}

// A password that is missing or was changed is asked for as long as the server refuses it.
bool Startup::askServerPassword(data::DatabaseAddress &address)
{
    while (!address.isEmbedded() && data::checkDatabase(address).failure == data::OpenFailure::Refused) {
        const auto password =
            ui::askText(nullptr, {.title = u"Accesso al server"_s,
                                  .label = u"Password di %1 sul server %2"_s.arg(address.user, address.host),
                                  .password = true});
        if (!password)
            return false;
        address.password = *password;
    }
    return true;
}

QString Startup::login(const data::DatabaseAddress &address)
{
    data::Connection connection;
    connection.setConnectionString(data::nativeConnectionString(address));
    connection.open();
    const QString proposed = options_.user.isEmpty() ? memory_.lastUser() : options_.user;
    const QStringList known = activeUsers(connection);
    QString user =
        logIn(nullptr, known.contains(proposed, Qt::CaseInsensitive) ? proposed : known.value(0), connection);
    if (!user.isEmpty())
        memory_.rememberUser(user);
    return user;
}

// One session, from the login to the closed window. Returns what to open next.
std::optional<Opening> Startup::work(const Opening &opening)
{
    data::DatabaseAddress address = opening.database;
    if (!askServerPassword(address))
        return {};
    requireOpening(address);
    const QString user = login(address);
    if (user.isEmpty())
        return {};
    Session session(address, user, memory_.settingsFile());
    session.startModules(QCoreApplication::applicationDirPath());
    insertFirstRows(opening.firstRows, session.connection());
    if (options_.database.isEmpty())
        memory_.remember(address, memory_.keepsPassword(address));
    new FileCommands(session.window(), address, memory_, folder_);
    session.window().show();
    worked_ = true;
    QApplication::exec();
    return session.window().nextDatabase();
}

// A session from the restored backup, if there is one, to the backup of the day.
std::optional<Opening> Startup::workAndBackUp(const Opening &opening)
{
    if (!opening.restoreFrom.isEmpty() && !restoreBackup(nullptr, opening.restoreFrom, opening.database))
        // On a server the new database was not made: back to the one before.
        return memory_.last() ? work({*memory_.last()}) : std::nullopt;
    const std::optional<Opening> next = work(opening);
    if (!next && worked_)
        backupAtExit(nullptr, folder_ + u"/backup"_s, opening.database);
    return next;
}

void Startup::run()
{
    std::optional<Opening> next = first();
    while (next) {
        const Opening current = *next;
        next.reset();
        // A database of the command line that fails ends the program; any other leaves the choice of another one.
        if (!options_.database.isEmpty())
            next = workAndBackUp(current);
        else if (!core::guarded(nullptr, [&] { next = workAndBackUp(current); }))
            next = ask();
        options_.database.clear();
        options_.empty = false;
        options_.user.clear();
    }
}

} // namespace

int runSessions(const StartOptions &options)
{
    Startup(options, QFileInfo(defaultDatabase().file).absolutePath()).run();
    return 0;
}

void upgradeDatabase(const StartOptions &options)
{
    const Opening opening = fromCommandLine(options);
    requireOpening(opening.database);
    Session session(opening.database, options.user.isEmpty() ? administrator : options.user, {});
    session.startModules(QCoreApplication::applicationDirPath());
    insertFirstRows(opening.firstRows, session.connection());
}

} // namespace host
