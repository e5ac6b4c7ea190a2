#pragma once
#include "platform/data/ConnectionString.h"

/// Where the program's database is, why it cannot be opened, and the making of a new one.
namespace host {

/// The embedded database of this account: "corvane.fdb" in the program's data folder, which is created.
data::DatabaseAddress defaultDatabase();

/// Empty when the database opens; else one or two Italian sentences for the user. The engine's own text goes to the
/// log; neither holds a password.
QString openProblem(const data::DatabaseAddress &address);

/// Creates the database with the host's schema and, with `demo`, its demonstration data. A failure half-way removes an
/// embedded file again, but never one that was there before. Throws data::DatabaseError, also when the file exists.
void createHostDatabase(const data::DatabaseAddress &address, bool demo);

} // namespace host
