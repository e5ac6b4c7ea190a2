#pragma once
#include "platform/data/ConnectionString.h"

#include <QString>

#include <functional>

class QWidget;

/// What the menu "File" offers on backups: questions, progress and the news of how it went. Errors are shown here.
/// Where a database is embedded, nobody in this program may have it open while it is backed up or restored.
namespace host {

/// Asks where the backup of `database` goes; empty when the user cancels.
QString chooseBackupFile(QWidget *owner, const data::DatabaseAddress &database);
/// Makes and verifies it, then calls `ended`, whatever came of it, before the user is told; true when it is there.
bool makeBackup(QWidget *owner, const data::DatabaseAddress &database, const QString &file,
                const std::function<void()> &ended);

/// Asks which backup is to be restored; empty when the user cancels.
QString chooseRestoreFile(QWidget *owner);
/// Restores it as `target`; true when `target` holds what the backup held. Before that nothing is asked: whoever calls
/// has confirmed that the current data go.
bool restoreBackup(QWidget *owner, const QString &file, const data::DatabaseAddress &target);

/// At the program's end: the daily backup in `folder` if it is due. A failure is told and never thrown, so that the
/// program ends; a cancelled one is due again next time.
void backupAtExit(QWidget *owner, const QString &folder, const data::DatabaseAddress &database);

} // namespace host
