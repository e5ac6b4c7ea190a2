#pragma once
#include "platform/core/Progress.h"
#include "platform/data/ConnectionString.h"

#include <QDate>
#include <QMap>
#include <QString>

/// Backups of a database with Firebird's own program, and their restoring. Whoever calls has closed its connections to
/// an embedded database, which one process at a time can open; a database on a server may stay in use.
///
/// Everything works beside the file that it makes and gives it its name at the end, so an error and a cancelled
/// `progress` leave no file behind and no older one changed.
namespace host {

/// Writes a backup of `database` to `file` on this machine, taking the place of an older file, after it has been
/// restored into a database of its own and that has the tables and as many rows in each as were backed up.
/// Throws core::Error and core::Cancelled.
void backupDatabase(const data::DatabaseAddress &database, const QString &file, core::Progress &progress);

/// Makes the database of the backup `file` the database `target`. An embedded file that is there stays until the new
/// one has been restored and checked, and is kept as "NAME.prima-del-ripristino-YYYYMMDD-HHMMSS.fdb" (time of this
/// machine); on a server only a database that does not exist yet is made. Throws core::Error and core::Cancelled.
///
/// Returns the path of the file kept, empty when there was none.
QString restoreDatabase(const QString &file, const data::DatabaseAddress &target, core::Progress &progress);

/// What is said where a database would be made on a server and `file` is one that is there.
QString takenOnServer(const QString &file);

/// How many rows each table of the database has. Throws data::DatabaseError.
QMap<QString, int> tableRows(const data::DatabaseAddress &database);

/// Removes what a backup or restore that was killed has left beside an embedded database: hidden folders with copies of
/// it, and the second name that it had for a moment.
void removeLeftovers(const data::DatabaseAddress &database);

/// The daily backup of an embedded database in `folder`: "NAME-YYYY-MM-DD.fbk". A database that does not lie beside
/// the folder has a mark of its path in the name, so that two of the same name do not count as one.
QString dailyBackupFile(const QString &folder, const data::DatabaseAddress &database, QDate day);
/// True when there is no backup of `today` yet; never for a database on a server, whose administrator makes them.
bool dailyBackupDue(const QString &folder, const data::DatabaseAddress &database, QDate today);
/// The day of the newest one; invalid when there is none.
QDate lastDailyBackup(const QString &folder, const data::DatabaseAddress &database);
/// Makes it, then removes all but the ten newest of this database. Throws core::Error and core::Cancelled.
void runDailyBackup(const QString &folder, const data::DatabaseAddress &database, QDate today,
                    core::Progress &progress);

} // namespace host
