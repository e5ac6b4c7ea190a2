#pragma once
#include "platform/data/ConnectionString.h"

#include <QWidget>

namespace host {

/// What stands in the way of a new database, and need not.
enum class Leftover
{
    None,      ///< nothing is there, or something that is to stay
    Empty,     ///< isUnfinished(): the new database replaces it
    Unreadable ///< perhaps of a creation that ended in its first moments: it is kept under another name
};

/// What is at `address`, which is opened for it. Throws data::DatabaseError.
Leftover leftoverAt(const data::DatabaseAddress &address);

/// Asks whether a new database may take the place of the leftover; Enter alone answers No. After a Yes it can be
/// created. Throws core::Error when the old file cannot be renamed.
bool makeRoom(QWidget *owner, const data::DatabaseAddress &address, Leftover leftover);

} // namespace host
