#pragma once
#include "platform/core/Progress.h"
#include "platform/data/Rows.h"

namespace data {

/// The rows of a query without parameters, read through a connection of its own, so that a thread of its own may wait
/// for them; `connectionString` as Connection has it. Cancelling `progress` ends the query, also while the database has
/// not come to its first row. Throws core::Cancelled then, else DatabaseError.
Rows readApart(const QString &connectionString, const QString &sql, core::Progress &progress);

} // namespace data
