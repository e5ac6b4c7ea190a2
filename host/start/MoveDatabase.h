#pragma once
#include "platform/core/Progress.h"
#include "platform/data/ConnectionString.h"

#include <QStringList>

class QWidget;

/// Moving a firm's database from this computer to a server and back, by a backup that is restored there.
namespace host {

/// Which tables do not hold the same rows in `to` as in `from`, or are in one of them alone; see tableContents().
/// Throws data::DatabaseError and core::Cancelled.
QStringList differingTables(const data::DatabaseAddress &from, const data::DatabaseAddress &to,
                            core::Progress &progress);

/// Restores the backup `file` of `from` as the new database `to`, has the engine look through it and compares what all
/// tables hold. A fault and what differs, as when somebody worked on in `from` meanwhile, is told, and `to` is given
/// up again; so it is when the user cancels. True when `to` may be opened.
bool finishMove(QWidget *owner, const QString &file, const data::DatabaseAddress &from,
                const data::DatabaseAddress &to);

} // namespace host
