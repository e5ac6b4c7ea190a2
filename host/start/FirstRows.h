#pragma once

#include "platform/data/Connection.h"

namespace host {

/// What a new database still gets once the modules have made their tables.
enum class FirstRows
{
    Demo,        ///< the demonstration firm's suppliers, carriers and so on
    CommonTables ///< transport types and reasons as most firms have them
};

/// Lets every module insert its demonstration data; call it after the modules have made their tables. Throws
/// data::DatabaseError.
void insertDemoModuleData(data::Connection &connection);

/// Notes in the new database what it is still to get, so that it gets it whenever it is opened next.
void noteFirstRows(FirstRows rows, data::Connection &connection);
/// Inserts what was noted, once; does nothing in any other database. Throws data::DatabaseError.
void insertNotedFirstRows(data::Connection &connection);

} // namespace host
