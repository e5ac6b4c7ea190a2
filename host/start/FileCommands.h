#pragma once
#include <QObject>

class QAction;
class QMenu;

namespace data {
struct DatabaseAddress;
}

namespace host {

class DatabaseMemory;
class MainWindow;

/// The commands of the menu "File" that open another database: a new firm, an existing one, one opened before.
class FileCommands : public QObject
{
    Q_OBJECT

public:
    /// Adds them in front of what `window`'s menu holds; `folder` is where new files are proposed.
    FileCommands(MainWindow &window, DatabaseMemory &memory, const QString &folder);

private:
    QAction *add(const QString &name, const QString &caption, void (FileCommands::*run)());
    void newFirm();
    void openDatabase();
    void listRecent();

    MainWindow &window_;
    DatabaseMemory &memory_;
    QString folder_;
    QMenu *recent_;
};

} // namespace host
