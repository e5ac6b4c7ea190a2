#pragma once
#include "platform/data/ConnectionString.h"

namespace host {

/// What a database that was just created gets once the modules have made their tables.
enum class FirstRows
{
    None,
    Demo,
    CommonTables
};

/// A database to work on.
struct Opening
{
    data::DatabaseAddress database;
    FirstRows firstRows = FirstRows::None;
    QString restoreFrom = {}; ///< a backup to be restored as this database before it is opened
};

} // namespace host
