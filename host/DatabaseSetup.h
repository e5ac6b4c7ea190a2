#pragma once
#include "platform/data/Connection.h"
#include "platform/data/ConnectionString.h"

#include <functional>

/// Where the program's database is, why it cannot be opened, and the making of a new one.
namespace host {

/// Empty when the database opens; else one or two Italian sentences for the user. The engine's own text goes to the
/// log; neither holds a password.
QString openProblem(const data::DatabaseAddress &address);

/// openProblem(), or that it is another program's database, or one that a newer version of this program has upgraded.
QString databaseProblem(const data::DatabaseAddress &address);
/// Throws core::Error with databaseProblem() when there is one.
void requireDatabase(const data::DatabaseAddress &address);

/// True when a creation that was cut off has left something there that holds nothing of a user's: an empty file, or a
/// database of which isCreationUnfinished() says so. False where nothing is there or it does not open. Throws
/// data::DatabaseError.
bool isUnfinished(const data::DatabaseAddress &address);

/// Creates the database with the host's schema and lets `fill` put the first rows into it. An embedded one gets its
/// name when it is complete. Something isUnfinished() is replaced: whoever has a user to ask asks before. After a
/// failure half-way there is what was there before. Throws core::Error, data::DatabaseError also when something else is
/// there.
void createFilledDatabase(const data::DatabaseAddress &address, const std::function<void(data::Connection &)> &fill);
/// The same with the demonstration data, or with nothing.
void createHostDatabase(const data::DatabaseAddress &address, bool demo);

} // namespace host
