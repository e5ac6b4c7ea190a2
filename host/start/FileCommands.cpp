#include "host/start/FileCommands.h"

#include "host/DatabaseSetup.h"
#include "host/backup/Backup.h"
#include "host/backup/BackupCommands.h"
#include "host/start/ClosedConnections.h"
#include "host/start/DatabaseMemory.h"
#include "host/start/DraftOffer.h"
#include "host/start/ServerDialog.h"
#include "host/start/StartDialogs.h"
#include "host/ui/MainWindow.h"
#include "host/ui/StartPage.h"
#include "host/users/Users.h"
#include "platform/core/Clock.h"
#include "platform/core/Format.h"
#include "platform/core/Messages.h"
#include "platform/core/Settings.h"
#include "platform/core/Sha256.h"
#include "platform/core/Translation.h"
#include "platform/data/Connection.h"
#include "platform/data/DatabaseFile.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/TextPrompt.h"

#include <QDir>
#include <QFileInfo>
#include <QMenuBar>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// Under which the day of a backup is kept that the user asked for.
QString backupKey(const data::DatabaseAddress &database)
{
    return u"copie/"_s + core::sha256Text(database.toString().toUtf8()).left(12);
}

QAction *firstAction(const QMenu &menu)
{
    return menu.actions().value(0);
}

} // namespace

FileCommands::FileCommands(MainWindow &window, const Opening &opening, DatabaseMemory &memory, const QString &folder)
    : QObject(&window)
    , window_(window)
    , opening_(opening)
    , memory_(memory)
    , folder_(folder)
    , recent_(ui::named(u"mnRecenti"_s, new QMenu(core::tr("Apri &recente"), &window)))
{
    auto *file = window.menuBar()->findChild<QMenu *>(u"mnFile"_s);
    QAction *before = firstAction(*file);
    QAction *create = add(u"actNuovaAzienda"_s, core::tr("&Nuova azienda..."), &FileCommands::newFirm);
    QAction *open = add(u"actApriArchivio"_s, core::tr("&Apri archivio..."), &FileCommands::openDatabase);
    file->insertActions(before, {create, open});
    file->insertMenu(before, recent_);
    file->insertSeparator(before);
    QAction *drafts = add(u"actBozze"_s, core::tr("&Documenti non salvati..."), &FileCommands::showDrafts);
    file->insertAction(before, drafts);
    QAction *backup = add(u"actCopiaSicurezza"_s, core::tr("&Copia di sicurezza..."), &FileCommands::backUp);
    QAction *restored = add(u"actRipristina"_s, core::tr("Ripri&stina una copia..."), &FileCommands::restore);
    QAction *moved = add(u"actPiuPostazioni"_s, core::tr("&Più postazioni..."), &FileCommands::move);
    file->insertActions(before, {backup, restored, moved});
    file->insertSeparator(before);
    if (auto *page = window.findChild<StartPage *>())
        page->showBackup([this] { return backupAge(); }, backup);
    connect(recent_, &QMenu::aboutToShow, this, &FileCommands::listRecent);
}

QAction *FileCommands::add(const QString &name, const QString &caption, void (FileCommands::*run)())
{
    auto *action = ui::named(name, new QAction(caption, this));
    connect(action, &QAction::triggered, this,
            [this, run] { core::guarded(&window_, [this, run] { (this->*run)(); }); });
    return action;
}

void FileCommands::newFirm()
{
    if (const auto opening = newFirmToOpen(&window_, folder_, memory_))
        window_.switchTo(*opening);
}

void FileCommands::openDatabase()
{
    if (const auto opening = databaseToOpen(&window_, folder_))
        window_.switchTo(*opening);
}

void FileCommands::offerDraftsOfCrash()
{
    core::guarded(&window_, [this] { offerDrafts(&window_, *window_.findChild<data::Connection *>()); });
}

void FileCommands::showDrafts()
{
    data::Connection &connection = *window_.findChild<data::Connection *>();
    if (waitingDrafts(&window_, connection).isEmpty())
        core::inform(&window_, core::tr("Non ci sono documenti non salvati."));
    else
        offerDrafts(&window_, connection);
}

void FileCommands::listRecent()
{
    recent_->clear();
    const QList<data::DatabaseAddress> databases = memory_.recent();
    int number = 0;
    for (const data::DatabaseAddress &database : databases) {
        QAction *action = recent_->addAction(u"&%1 %2"_s.arg(++number).arg(database.toString()));
        connect(action, &QAction::triggered, this,
                [this, database] { core::guarded(&window_, [this, &database] { openRecent(database); }); });
    }
}

// What does not open must not cost the session that is open. A refused password is asked for later.
void FileCommands::openRecent(const data::DatabaseAddress &chosen)
{
    const data::DatabaseAddress database = memory_.withPassword(chosen);
    const data::OpenFailure failure = [&database] {
        const ui::WaitCursor wait;
        return data::checkDatabase(database).failure;
    }();
    if (failure == data::OpenFailure::Missing) {
        if (core::confirm(&window_, openProblem(database) + core::tr("\n\rToglierlo dall'elenco?")))
            memory_.forget(database);
        return;
    }
    if (failure != data::OpenFailure::Refused)
        requireDatabase(database);
    window_.switchTo({.database = database, .keepPassword = memory_.keepsPassword(database)});
}

// A backup holds all data, those of documents that the user may not see among them. The daily one asks nobody: it lies
// where the database lies.
bool FileCommands::requireControl()
{
    const bool inControl = currentUserInControl(*window_.findChild<data::Connection *>());
    if (!inControl)
        refuseForRights(&window_);
    return inControl;
}

QString FileCommands::backupAge() const
{
    const QSettings settings(memory_.settingsFile(), QSettings::IniFormat);
    const QDate asked = settings.value(backupKey(opening_.database)).toDate();
    const QDate daily =
        opening_.database.isEmbedded() ? lastDailyBackup(folder_ + u"/backup"_s, opening_.database) : QDate();
    const QDate last = !asked.isValid() || daily > asked ? daily : asked;
    if (!last.isValid())
        return core::tr("Nessuna copia di sicurezza: farla ora");
    const qint64 days = last.daysTo(core::today());
    const QString age = days <= 0   ? core::tr("oggi")
                        : days == 1 ? core::tr("ieri")
                                    : core::tr("%1 giorni fa").arg(days);
    return core::tr("Ultima copia di sicurezza: %1 (%2)").arg(age, core::formatDate(last));
}

void FileCommands::rememberBackup()
{
    core::changeSettings(memory_.settingsFile(), [this](QSettings &settings) {
        settings.setValue(backupKey(opening_.database), core::today().toString(Qt::ISODate));
    });
}

// The backup program opens the file itself, which an embedded database allows to one process at a time.
void FileCommands::backUp()
{
    if (!requireControl())
        return;
    const QString file = chooseBackupFile(&window_, opening_.database);
    if (!file.isEmpty() && backUpTo(file))
        rememberBackup();
}

bool FileCommands::backUpTo(const QString &file)
{
    if (!opening_.database.isEmbedded())
        return makeBackup(&window_, opening_.database, file, [] {});
    ClosedConnections closed(window_);
    const auto reopen = [this, &closed] {
        // Another program may have opened the file first; what is typed in the forms needs the connections.
        while (!core::guarded(&window_, [&closed] { closed.reopen(); }) &&
               core::confirm(&window_, core::tr("L'archivio non si può riaprire.\n\rRiprovare?"))) {
        }
    };
    return makeBackup(&window_, opening_.database, file, reopen);
}

void FileCommands::restore()
{
    if (!requireControl())
        return;
    Opening restored = opening_;
    restored.before = std::make_shared<const Opening>(opening_);
    restored.restoreFrom = chooseRestoreFile(&window_);
    if (!restored.restoreFrom.isEmpty() && confirmTarget(restored.database))
        window_.switchTo(restored);
}

// From this computer to a server, or back.
void FileCommands::move()
{
    if (!requireControl())
        return;
    Opening moved{.isMove = true, .before = std::make_shared<const Opening>(opening_)};
    const QString name = QFileInfo(opening_.database.file).completeBaseName();
    if (opening_.database.isEmbedded()) {
        const auto place = askServerPlace(&window_, name + u".fdb"_s);
        if (!place)
            return;
        moved.database = place->database;
        moved.keepPassword = place->keepPassword;
    } else if (!askNewFile(moved.database)) {
        return;
    }
    // What the forms still save belongs into the backup.
    if (!window_.closeChildren())
        return;
    QDir().mkpath(folder_ + u"/backup"_s);
    moved.restoreFrom =
        u"%1/backup/%2-spostamento-%3.fbk"_s.arg(folder_, name, core::now().toString(u"yyyyMMdd-HHmmss"_s));
    if (backUpTo(moved.restoreFrom))
        window_.switchTo(moved);
}

bool FileCommands::askNewFile(data::DatabaseAddress &target)
{
    if (!core::confirm(
            &window_, core::tr("L'archivio è sul server %1.\n\rRiportarlo su questo computer, per una sola postazione?")
                          .arg(opening_.database.host)))
        return false;
    target.file = ui::chooseSaveFile(&window_, {.title = core::tr("Archivio su questo computer"),
                                                .filter = core::tr("Database Firebird (*.fdb)"),
                                                .defaultExtension = u"fdb"_s,
                                                .proposedName = QFileInfo(opening_.database.file).fileName()});
    if (target.file.isEmpty())
        return false;
    const bool isFree = !QFileInfo::exists(target.file);
    if (!isFree)
        core::warn(&window_, core::tr("Il file \"%1\" esiste già: scegliere un altro nome.").arg(target.file));
    return isFree;
}

// On a server no database is replaced: other workstations may be working on it.
bool FileCommands::confirmTarget(data::DatabaseAddress &target)
{
    if (target.isEmbedded())
        return core::confirmLoss(&window_,
                                 core::tr("I dati attuali verranno sostituiti da quelli della copia;\n\rl'archivio "
                                          "attuale resta accanto al nuovo, con un altro nome.\n\rContinuare?"));
    const QFileInfo current(target.file);
    const auto isFree = [this, &target](const QString &name) {
        data::DatabaseAddress made = target;
        made.file = name;
        const bool missing = data::checkDatabase(made).failure == data::OpenFailure::Missing;
        if (!missing)
            core::warn(&window_, takenOnServer(name));
        return missing;
    };
    const auto name =
        ui::askText(&window_, {.title = core::tr("Ripristina sul server"),
                               .label = core::tr("File del nuovo database sul server"),
                               .initial = u"%1/%2-ripristinato.fdb"_s.arg(current.path(), current.completeBaseName()),
                               .maxLength = 255,
                               .accept = isFree});
    target.file = name.value_or(QString());
    return name.has_value();
}

} // namespace host
