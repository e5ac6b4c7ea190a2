#pragma once
#include "platform/data/ConnectionString.h"

#include <QObject>

class QAction;
class QMenu;

namespace host {

class DatabaseMemory;
class MainWindow;

/// The commands of the menu "File" on whole databases: a new firm, an existing one, one opened before, backup, restore.
class FileCommands : public QObject
{
    Q_OBJECT

public:
    /// Adds them in front of what `window`'s menu holds; `database` is the one that is open, and `folder` is where new
    /// files are proposed.
    FileCommands(MainWindow &window, const data::DatabaseAddress &database, DatabaseMemory &memory,
                 const QString &folder);

private:
    QAction *add(const QString &name, const QString &caption, void (FileCommands::*run)());
    void newFirm();
    void openDatabase();
    void listRecent();
    void backUp();
    void restore();

    MainWindow &window_;
    data::DatabaseAddress database_;
    DatabaseMemory &memory_;
    QString folder_;
    QMenu *recent_;
};

} // namespace host
