#pragma once
#include "host/start/Opening.h"

#include <QAction>
#include <QMenu>
#include <QObject>

namespace host {

class DatabaseMemory;
class MainWindow;

/// The commands of the menu "File" on whole databases: a new firm, an existing one, one opened before, what
/// is unsaved, backup, restore, the move to a server and back.
class FileCommands : public QObject
{
    Q_OBJECT

public:
    /// Adds them in front of what `window`'s menu holds; `opening` is what is open, and `folder` is where new files are
    /// proposed.
    FileCommands(MainWindow &window, const Opening &opening, DatabaseMemory &memory, const QString &folder);

    /// What the program's sudden end has left unsaved is offered, if anything.
    void offerDraftsOfCrash();

private:
    QAction *add(const QString &name, const QString &caption, void (FileCommands::*run)());
    void newFirm();
    void openDatabase();
    void showDrafts();
    void listRecent();
    void openRecent(const data::DatabaseAddress &chosen);
    void backUp();
    QString backupAge() const;
    void rememberBackup();
    void restore();
    bool requireControl();
    bool backUpTo(const QString &file);
    void move();
    bool askNewFile(data::DatabaseAddress &target);
    bool confirmTarget(data::DatabaseAddress &target);

    MainWindow &window_;
    Opening opening_;
    DatabaseMemory &memory_;
    QString folder_;
    QMenu *recent_;
};

} // namespace host
