#include "host/Application.h"

#include "host/Corvane3Impl.h"
#include "host/DesktopScheme.h"
#include "host/HostCommands.h"
#include "host/HostOffer.h"
#include "host/PackageLoader.h"
#include "host/Translations.h"
#include "host/Version.h"
#include "host/help/HostChapters.h"
#include "host/help/ManualWindow.h"
#include "host/start/SelfCheck.h"
#include "host/start/Startup.h"
#include "host/ui/MainWindow.h"
#include "host/ui/Printing.h"
#include "host/ui/StartPage.h"
#include "platform/core/Error.h"
#include "platform/core/FileAccess.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/core/WorkFolder.h"
#include "platform/data/Connection.h"
#include "platform/data/DatabaseFile.h"
#include "platform/ui/Drafts.h"
#include "platform/ui/Icons.h"
#include "platform/ui/Look.h"
#include "platform/ui/MessageBoxes.h"
#include "platform/ui/UserSettings.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QProcess>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString selfCheck = u"self-check"_s;

QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

bool hasScreen()
{
    const QString platform = QGuiApplication::platformName();
    return platform != u"offscreen"_s && platform != u"minimal"_s;
}

// Where nobody can answer, a message goes to standard error and the most careful answer is taken.
void printMessages(int &shown)
{
    core::setMessageHandler([&shown](const core::Message &message) {
        ++shown;
        const QString text = QString(message.text).replace(u"\n\r"_s, u" "_s);
        std::fprintf(stderr, "%s: %s\n", qUtf8Printable(message.title), qUtf8Printable(text));
        return message.answers.last();
    });
}

StartOptions parseArguments(const QApplication &application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(core::tr("Corvane, gestione aziendale"));
    const QCommandLineOption database(u"database"_s, core::tr("Apre un altro database: FILE oppure HOST[/PORTA]:FILE."),
                                      u"database"_s);
    const QCommandLineOption user(u"user"_s, core::tr("Nome proposto per l'accesso."), u"nome"_s);
    const QCommandLineOption empty(u"empty"_s, core::tr("Crea il database, se non esiste, senza dati dimostrativi."));
    const QCommandLineOption upgrade(u"upgrade"_s, core::tr("Aggiorna lo schema del database e termina."));
    const QCommandLineOption tour(u"tour"_s, core::tr("Esegue la visita guidata e ne salva le immagini in CARTELLA."),
                                  u"cartella"_s);
    const QCommandLineOption check(
        selfCheck,
        core::tr("Controlla l'installazione con un archivio dimostrativo temporaneo, senza finestre, e termina."));
    parser.addOptions({database, user, empty, upgrade, tour, check});
    parser.addPositionalArgument(u"archivio"_s, core::tr("Un archivio da aprire, come con --database."),
                                 u"[archivio]"_s);
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application);
    return {.database = parser.isSet(database) ? parser.value(database) : parser.positionalArguments().value(0),
            .user = parser.value(user),
            .empty = parser.isSet(empty),
            .upgrade = parser.isSet(upgrade),
            .selfCheck = parser.isSet(check),
            .tourFolder = parser.value(tour)};
}

// The tour is a program of its own beside this one; it writes to the same terminal, and its exit code is ours.
int startTour(const QString &folder)
{
    const int code = QProcess::execute(QCoreApplication::applicationDirPath() + u"/corvane_tour"_s, {folder});
    if (code < 0)
        core::showError(nullptr, core::tr("La visita guidata non è installata."));
    return code < 0 ? 1 : code;
}

int work(const StartOptions &options, const int &printed)
{
    if (options.selfCheck) {
        checkInstallation(dataFolder());
        return printed == 0 ? 0 : 1;
    }
    if (!options.upgrade) {
        runSessions(options, dataFolder());
        return 0;
    }
    upgradeDatabase(options, dataFolder());
    return printed == 0 ? 0 : 1;
}

} // namespace

QString draftFolder(const QString &dataFolder)
{
    return dataFolder + u"/bozze"_s;
}

Session::Session(const data::DatabaseAddress &address, const QString &user, const QString &settingsFile,
                 std::unique_ptr<data::Connection> opened)
    : window_(std::make_unique<MainWindow>(settingsFile))
    , connection_(opened ? opened.release() : new data::Connection(data::nativeConnectionString(address)))
{
    connection_->setParent(window_.get());
    SetKxCurrentUserName(user);
    ui::rememberFor(settingsFile, user);
    keepPrinters(settingsFile);
    if (!settingsFile.isEmpty())
        keepDrafts(draftFolder(QFileInfo(settingsFile).absolutePath()), address, user);
    window_->showSession(user, address.toString());
    commands_ = new HostCommands(*window_, *connection_);
    offerAtStart(commands_, hostOffer(*connection_));
    new StartPage(window_->area(), *connection_);
}

Session::~Session()
{
    // Modules go while the main window, which shows their forms, is still there.
    stopPackages();
    delete commands_;
}

void Session::keepDrafts(const QString &folder, const data::DatabaseAddress &address, const QString &user)
{
    auto *drafts = new ui::Drafts(folder, address.toString(), user, window_.get());
    QObject::connect(drafts, &ui::Drafts::failed, window_.get(), [this](const QString &reason) {
        window_->statusBar()->showMessage(
            core::tr("Ciò che si scrive non viene conservato fino al salvataggio: %1").arg(reason));
    });
}

void choosePlatform(int argc, char *argv[])
{
    const bool showsWindows = std::none_of(argv, argv + argc, [](const char *argument) {
        const QByteArrayView name(argument);
        return name == "--upgrade" || name == "--self-check" || name == "--tour" || name.startsWith("--tour=");
    });
    const bool hasDisplay = qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
                            qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    if (!showsWindows || !hasDisplay)
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

// A firm's data and what the program knows of it are no other account's business, also where an older version of the
// program or another umask has made the files.
void protectData(const QString &folder)
{
    QDir().mkpath(folder);
    for (const QString &own : {folder, folder + u"/backup"_s, folder + u"/bozze"_s}) {
        core::makePrivate(own);
        core::WorkFolder::removeAbandoned(own);
    }
}

void prepareProgram(QApplication &application)
{
    QCoreApplication::setApplicationName(u"corvane"_s);
    QCoreApplication::setApplicationVersion(programVersion());
    QGuiApplication::setDesktopFileName(u"it.corvane.Corvane"_s);
    QApplication::setWindowIcon(QIcon(u":/corvane.svg"_s));
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    ui::Look::use();
    if (hasScreen())
        followDesktopScheme(&application);
    ui::useIconTheme();
    installTranslations(application);
    core::keepNewFilesPrivate();
    addHostChapters();
    installHelpKey(&application);
    protectData(dataFolder());
    core::setLogFile(dataFolder() + u"/corvane.log"_s);
    core::logQtWarnings();
    data::useLockFolder(dataFolder() + u"/lock"_s);
}

int runApplication(QApplication &application)
{
    // The check of the installation leaves the account's own folder alone.
    std::optional<QTemporaryDir> own;
    if (QCoreApplication::arguments().contains(u"--"_s + selfCheck)) {
        own.emplace();
        qputenv("XDG_DATA_HOME", QFile::encodeName(own->path()));
    }
    prepareProgram(application);
    const StartOptions options = parseArguments(application);
    int printed = 0;
    const bool isSilent = options.upgrade || options.selfCheck;
    if (isSilent || !hasScreen())
        printMessages(printed);
    else
        ui::installMessageBoxes();
    if (!options.tourFolder.isEmpty())
        return startTour(options.tourFolder);
    int code = 1;
    if (!isSilent && !hasScreen())
        core::showError(nullptr, core::tr("Nessuno schermo disponibile: usare --tour CARTELLA oppure --upgrade."));
    else if (core::guarded(nullptr, [&] { code = work(options, printed); }))
        return code;
    return 1;
}

} // namespace host
