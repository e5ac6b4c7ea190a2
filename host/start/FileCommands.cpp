#include "host/start/FileCommands.h"

#include "host/start/DatabaseMemory.h"
#include "host/start/StartDialogs.h"
#include "host/ui/MainWindow.h"
#include "platform/core/Messages.h"

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

FileCommands::FileCommands(MainWindow &window, DatabaseMemory &memory, const QString &folder)
    : QObject(&window)
    , window_(window)
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

} // namespace host
