#include "host/start/Startup.h"

#include "host/DatabaseSetup.h"
#include "host/PackageLoader.h"
#include "host/backup/Backup.h"
#include "host/backup/BackupCommands.h"
#include "host/schema/DemoData.h"
#include "host/start/DatabaseMemory.h"
#include "host/start/FileCommands.h"
#include "host/start/FirstRows.h"
#include "host/start/Leftovers.h"
#include "host/start/MoveDatabase.h"
#include "host/start/Opening.h"
#include "host/start/StartDialogs.h"
#include "host/start/StartTurn.h"
#include "host/start/Upgrade.h"
#include "host/ui/MainWindow.h"
#include "host/users/PasswordDialogs.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/data/Connection.h"
#include "platform/data/DatabaseFile.h"
#include "platform/ui/Drafts.h"
#include "platform/ui/TextPrompt.h"
#include "platform/ui/WaitWindow.h"

#include <QApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString creatingText()
{
    return core::tr("Creazione dell'archivio…");
}
QString openingText()
{
    return core::tr("Apertura dell'archivio…");
}

data::DatabaseAddress demoDatabase(const QString &folder)
{
    data::DatabaseAddress address;
    address.file = folder + u"/corvane.fdb"_s;
    return address;
}

data::DatabaseAddress commandLineDatabase(const StartOptions &options, const QString &folder)
{
    data::DatabaseAddress address =
        options.database.isEmpty() ? demoDatabase(folder) : data::DatabaseAddress::parse(options.database);
    if (address.isEmbedded()) {
        address.file = QFileInfo(address.file).absoluteFilePath();
        return address;
    }
    // Firebird's own variables; a password never stands on the command line, where others could read it.
    address.user = qEnvironmentVariable("ISC_USER", address.user);
    address.password = qEnvironmentVariable("ISC_PASSWORD");
    return address;
}

void createDemo(const data::DatabaseAddress &address)
{
    createFilledDatabase(address, [](data::Connection &connection) {
        insertDemoMasterData(connection);
        noteFirstRows(FirstRows::Demo, connection);
    });
}

/// What stands where a database is to be created.
struct Place
{
    bool isFree = false;
    Leftover leftover = Leftover::None;
};

// A server may be slow to answer.
Place lookAt(const data::DatabaseAddress &address)
{
    const ui::WaitWindow window(openingText());
    return {.isFree = data::checkDatabase(address).failure == data::OpenFailure::Missing,
            .leftover = leftoverAt(address)};
}

// Without a display there is nobody to ask, and nothing to lose either.
bool mayCreateAt(const data::DatabaseAddress &address, const StartOptions &options)
{
    const Place place = lookAt(address);
    return place.isFree || (place.leftover == Leftover::Empty && options.upgrade) ||
           (place.leftover != Leftover::None && makeRoom(nullptr, address, place.leftover));
}

// The database of the command line, created where that was asked for.
data::DatabaseAddress fromCommandLine(const StartOptions &options, const QString &folder)
{
    data::DatabaseAddress address = commandLineDatabase(options, folder);
    const bool mayCreate = options.database.isEmpty() || options.empty;
    if (mayCreate && mayCreateAt(address, options)) {
        const ui::WaitWindow window(creatingText());
        if (options.empty)
            createHostDatabase(address, false);
        else
            createDemo(address);
    }
    return address;
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
    std::optional<Opening> ask(const Opening &tried);
    std::optional<Opening> chosen(FirstStart choice, const Opening &tried);
    std::optional<Opening> demo();
    static bool askServerPassword(data::DatabaseAddress &address);
    Login login(data::Connection &connection, bool fromCommandLine);
    void remember(const Opening &opened);
    void finishRestore(Opening &opened);
    std::optional<Opening> open(Opening &opened);
    std::optional<Opening> work(const Opening &opening, const QString &user,
                                std::unique_ptr<data::Connection> connection);

    StartOptions options_;
    QString folder_;
    DatabaseMemory memory_;
    QList<data::DatabaseAddress> worked_; // that somebody may have changed
};

std::optional<Opening> Startup::first()
{
    if (!options_.database.isEmpty() || options_.empty)
        return Opening{.database = fromCommandLine(options_, folder_), .fromCommandLine = true};
    if (const auto last = memory_.last())
        return Opening{.database = *last, .keepPassword = memory_.keepsPassword(*last)};
    if (QFileInfo::exists(demoDatabase(folder_).file))
        return Opening{.database = demoDatabase(folder_)};
    return ask({});
}

std::optional<Opening> Startup::demo()
{
    const data::DatabaseAddress address = demoDatabase(folder_);
    const Place place = lookAt(address);
    if (place.leftover != Leftover::None && !makeRoom(nullptr, address, place.leftover))
        return {};
    if (place.leftover != Leftover::None || place.isFree) {
        const ui::WaitWindow window(creatingText());
        createDemo(address);
    }
    return Opening{.database = address};
}

std::optional<Opening> Startup::chosen(FirstStart choice, const Opening &tried)
{
    switch (choice) {
    case FirstStart::Again:
        return tried;
    case FirstStart::Demo:
        return demo();
    case FirstStart::NewFirm:
        return newFirmToOpen(nullptr, folder_, memory_);
    case FirstStart::Open:
        return databaseToOpen(nullptr, folder_, tried.database);
    case FirstStart::GiveUp:
        break;
    }
    return {};
}

// Until there is something to open or the user gives up. `tried` is what was just tried in vain, if anything.
std::optional<Opening> Startup::ask(const Opening &tried)
{
    for (;;) {
        const FirstStart choice = askFirstStart(tried.database.toString());
        if (choice == FirstStart::GiveUp)
            return {};
        std::optional<Opening> opening;
        core::guarded(nullptr, [&] { opening = chosen(choice, tried); });
        if (opening)
            return opening;
    }
}

// A password that is missing or was changed is asked for as long as the server refuses it.
bool Startup::askServerPassword(data::DatabaseAddress &address)
{
    const auto refused = [&address] {
        if (address.isEmbedded())
            return false;
        const ui::WaitWindow window(openingText());
        return data::checkDatabase(address).failure == data::OpenFailure::Refused;
    };
    for (bool again = !address.password.isEmpty(); refused(); again = true) {
        if (again)
            core::warn(nullptr, openProblem(address));
        const auto password =
            ui::askText(nullptr, {.title = core::tr("Accesso al server"),
                                  .label = core::tr("Password di %1 sul server %2").arg(address.user, address.host),
                                  .password = true});
        if (!password)
            return false;
        address.password = *password;
    }
    return true;
}

Login Startup::login(data::Connection &connection, bool fromCommandLine)
{
    const QString proposed = fromCommandLine && !options_.user.isEmpty() ? options_.user : memory_.lastUser();
    Login result = logIn(nullptr, proposed, connection);
    if (!result.user.isEmpty() && !fromCommandLine)
        core::guarded(nullptr, [&] { memory_.rememberUser(result.user); });
    return result;
}

void prepare(const data::DatabaseAddress &address)
{
    const ui::WaitWindow window(openingText());
    removeLeftovers(address);
    requireDatabase(address);
    upgradeHost(address);
}

bool restored(const Opening &opening)
{
    return opening.isMove ? finishMove(nullptr, opening.restoreFrom, opening.before->database, opening.database)
                          : restoreBackup(nullptr, opening.restoreFrom, opening.database);
}

// What cannot be remembered, on a full disk, keeps nobody from working.
void Startup::remember(const Opening &opened)
{
    if (!opened.fromCommandLine)
        core::guarded(nullptr, [&] { memory_.remember(opened.database, opened.keepPassword); });
}

// From here on this is the firm's database, whatever becomes of the login: it is not made again, and the next start
// must not open the one that it came from.
void Startup::finishRestore(Opening &opened)
{
    if (opened.isMove)
        core::guarded(nullptr, [&] {
            ui::Drafts::follow(draftFolder(folder_), opened.before->database.toString(), opened.database.toString());
        });
    opened.restoreFrom.clear();
    opened.isMove = false;
    opened.before.reset();
    remember(opened);
}

// From the backup to be restored, if any, which `opened` is rid of once that is done, through the login to the closed
// window. Returns what to open next; where the user turned back, that is the user's choice.
std::optional<Opening> Startup::open(Opening &opened)
{
    if (!opened.restoreFrom.isEmpty()) {
        if (!restored(opened))
            return *opened.before;
        finishRestore(opened);
    }
    if (!askServerPassword(opened.database))
        return ask(opened);
    prepare(opened.database);
    auto connection = std::make_unique<data::Connection>(data::nativeConnectionString(opened.database));
    const Login entered = login(*connection, opened.fromCommandLine);
    if (entered.lockedOut)
        return {};
    if (entered.user.isEmpty()) {
        connection.reset();
        return ask(opened);
    }
    remember(opened);
    return work(opened, entered.user, std::move(connection));
}

std::optional<Opening> Startup::work(const Opening &opening, const QString &user,
                                     std::unique_ptr<data::Connection> connection)
{
    std::optional<ui::WaitWindow> window(std::in_place, openingText());
    std::optional<StartTurn> turn(std::in_place, opening.database);
    Session session(opening.database, user, memory_.settingsFile(), std::move(connection));
    startModules();
    insertNotedFirstRows(session.connection());
    turn.reset();
    window.reset();
    auto *files = new FileCommands(session.window(), opening, memory_, folder_);
    worked_.removeIf([&](const data::DatabaseAddress &one) { return one.toString() == opening.database.toString(); });
    worked_.append(opening.database);
    session.window().show();
    // Over the window, once it is there.
    QMetaObject::invokeMethod(files, &FileCommands::offerDraftsOfCrash, Qt::QueuedConnection);
    QApplication::exec();
    return session.window().nextDatabase();
}

void Startup::run()
{
    std::optional<Opening> next = first();
    while (next) {
        Opening current = *next;
        next.reset();
        if (current.fromCommandLine)
            next = open(current);
        else if (!core::guarded(nullptr, [&] { next = open(current); }))
            next = ask(current);
    }
    for (const data::DatabaseAddress &database : std::as_const(worked_))
        backupAtExit(nullptr, folder_ + u"/backup"_s, database);
}

} // namespace

void runSessions(const StartOptions &options, const QString &folder)
{
    Startup(options, folder).run();
}

void upgradeDatabase(const StartOptions &options, const QString &folder)
{
    const data::DatabaseAddress address = fromCommandLine(options, folder);
    requireDatabase(address);
    upgradeHost(address);
    const StartTurn turn(address);
    Session session(address, options.user.isEmpty() ? administrator : options.user, {});
    startModules();
    insertNotedFirstRows(session.connection());
}

} // namespace host
