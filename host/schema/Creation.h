#pragma once

#include "platform/data/Connection.h"

/// Whether the making of a database has come to its end. On a server no finished file can be given its name at last, so
/// the database itself has to tell.
namespace host {

/// Makes the table of versions in an empty database and notes in it that the creation runs. Throws data::DatabaseError.
void beginCreation(data::Connection &connection);
/// Takes the note away, the last thing that a creation does. Throws data::DatabaseError.
void endCreation(data::Connection &connection);

/// True for a database whose creation was cut off, or still runs: it has the note, or, as the first release left such a
/// database, nothing but tables of the host that are all empty. It holds nothing of a user's: nobody could log in yet.
/// Throws data::DatabaseError.
bool isCreationUnfinished(data::Connection &connection);

} // namespace host
