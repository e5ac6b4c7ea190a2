#pragma once
#include "platform/core/Progress.h"
#include "platform/data/ConnectionString.h"

#include <QMap>
#include <QString>

namespace host {

/// What each table of a database holds, as a text that is the same for the same rows in whatever order: their number
/// and a sum over all values of all rows, which the engine makes. The values of the generators stand under
/// "numeratori". A million rows take the engine a few seconds. Throws data::DatabaseError and core::Cancelled.
QMap<QString, QString> tableContents(const data::DatabaseAddress &database, core::Progress &progress);

} // namespace host
