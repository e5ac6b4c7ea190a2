#pragma once
#include "platform/data/Connection.h"

/// Indexes that only make the program faster. They have no version: what the database's catalogue lacks is made.
namespace schema {

/// Makes those that are missing, each in a transaction of its own that does not wait for other workstations. One that
/// cannot be made now is written to the log and left to the next start. Never throws.
void createMissingIndexes(data::Connection &connection);

} // namespace schema
