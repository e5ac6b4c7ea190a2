#pragma once
#include "platform/data/ConnectionString.h"

#include <functional>

namespace data {
class Connection;
}

/// Where the program's database is, why it cannot be opened, and the making of a new one.
namespace host {

/// The embedded database of this account: "corvane.fdb" in the program's data folder, which is created.
data::DatabaseAddress defaultDatabase();

/// Empty when the database opens; else one or two Italian sentences for the user. The engine's own text goes to the
/// log; neither holds a password.
QString openProblem(const data::DatabaseAddress &address);

/// Creates the database with the host's schema and lets `fill` put the first rows into it. A failure half-way removes
/// the database again, but never one that was there before. Throws what failed, data::DatabaseError also when the file
/// exists.
void createHostDatabase(const data::DatabaseAddress &address, const std::function<void(data::Connection &)> &fill);
/// The same with the demonstration data, or with nothing.
void createHostDatabase(const data::DatabaseAddress &address, bool demo);

} // namespace host
