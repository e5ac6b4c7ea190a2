#pragma once
#include "platform/data/ConnectionString.h"

#include <memory>

namespace host {

/// A database to work on.
struct Opening
{
    data::DatabaseAddress database;
    bool keepPassword = false; ///< of a server
    QString restoreFrom = {};  ///< a backup to be restored as this database before it is opened
    bool isMove = false;       ///< that backup is of `before`, which moves here with all it holds
    /// What to go back to, as it was opened, when the backup cannot be restored.
    std::shared_ptr<const Opening> before = {};
    /// Named on the command line: not remembered, and the program ends when it does not open.
    bool fromCommandLine = false;
};

} // namespace host
