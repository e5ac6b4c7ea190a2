#include "host/start/FileCommands.h"

#include "host/backup/BackupCommands.h"
#include "host/start/ClosedConnections.h"
#include "host/start/DatabaseMemory.h"
#include "host/start/StartDialogs.h"
#include "host/ui/MainWindow.h"
#include "host/users/Users.h"
#include "platform/core/Messages.h"
#include "platform/data/Connection.h"
#include "platform/ui/TextPrompt.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QAction *firstAction(const QMenu &menu)
{
    return menu.actions().value(0);
}

} // namespace

FileCommands::FileCommands(MainWindow &window, const data::DatabaseAddress &database, DatabaseMemory &memory,
                           const QString &folder)
    : QObject(&window)
    , window_(window)
    , database_(database)
    , memory_(memory)
    , folder_(folder)
    , recent_(new QMenu(u"Apri &recente"_s, &window))
{
    auto *file = window.menuBar()->findChild<QMenu *>(u"mnFile"_s);
    QAction *before = firstAction(*file);
    QAction *create = add(u"actNuovaAzienda"_s, u"&Nuova azienda..."_s, &FileCommands::newFirm);
    QAction *open = add(u"actApriArchivio"_s, u"&Apri archivio..."_s, &FileCommands::openDatabase);
    file->insertActions(before, {create, open});
    file->insertMenu(before, recent_);
    file->insertSeparator(before);
    QAction *backup = add(u"actCopiaSicurezza"_s, u"&Copia di sicurezza..."_s, &FileCommands::backUp);
    QAction *restored = add(u"actRipristina"_s, u"Ripri&stina una copia..."_s, &FileCommands::restore);
    file->insertActions(before, {backup, restored});
    file->insertSeparator(before);
    connect(recent_, &QMenu::aboutToShow, this, &FileCommands::listRecent);
    recent_->setObjectName(u"mnRecenti"_s);
}

QAction *FileCommands::add(const QString &name, const QString &caption, void (FileCommands::*run)())
{
    auto *action = new QAction(caption, this);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this,
            [this, run] { core::guarded(&window_, [this, run] { (this->*run)(); }); });
    return action;
}

void FileCommands::newFirm()
{
    const auto firm = askNewFirm(&window_, folder_);
    if (!firm)
        return;
    memory_.remember(firm->database, firm->keepPassword);
    window_.switchTo({firm->database, firm->commonTables ? FirstRows::CommonTables : FirstRows::None});
}

void FileCommands::openDatabase()
{
    const auto chosen = askDatabase(&window_, folder_);
    if (!chosen)
        return;
    memory_.remember(chosen->address, chosen->keepPassword);
    window_.switchTo({chosen->address});
}

void FileCommands::listRecent()
{
    recent_->clear();
    const QList<data::DatabaseAddress> databases = memory_.recent();
    int number = 0;
    for (const data::DatabaseAddress &database : databases) {
        QAction *action = recent_->addAction(u"&%1 %2"_s.arg(++number).arg(database.toString()));
        connect(action, &QAction::triggered, this, [this, database] { window_.switchTo({database}); });
    }
    recent_->setToolTipsVisible(true);
}

// The backup program opens the file itself, which an embedded database allows to one process at a time.
void FileCommands::backUp()
{
    const QString file = chooseBackupFile(&window_, database_);
    if (file.isEmpty())
        return;
    if (!database_.isEmbedded()) {
        makeBackup(&window_, database_, file);
        return;
    }
    ClosedConnections closed(window_);
    makeBackup(&window_, database_, file);
    closed.reopen();
}

// On a server no database is replaced: other workstations may be working on it.
void FileCommands::restore()
{
    if (!userHasRight(GetKxCurrentUserName(), fullControl, *window_.findChild<data::Connection *>())) {
        core::refuseForRights(&window_);
        return;
    }
    const QString file = chooseRestoreFile(&window_);
    if (file.isEmpty())
        return;
    Opening opening{.database = database_, .restoreFrom = file};
    if (database_.isEmbedded()) {
        if (!core::confirm(&window_,
                           u"I dati attuali verranno sostituiti da quelli della copia;\n\rl'archivio attuale resta "
                           "accanto al nuovo, con un altro nome.\n\rContinuare?"_s))
            return;
    } else {
        const auto name = ui::askText(&window_, {.title = u"Ripristina sul server"_s,
                                                 .label = u"File del nuovo database sul server"_s,
                                                 .initial = database_.file,
                                                 .maxLength = 255});
        if (!name)
            return;
        opening.database.file = *name;
    }
    window_.switchTo(opening);
}

} // namespace host
