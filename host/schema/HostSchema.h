#pragma once

namespace data {
class Connection;
}

namespace host {

/// Creates the host's own tables, generators, key triggers and indexes in an empty database, with the rows that every
/// database has: the options, the right "Controllo completo" and the user AMMINISTRATORE holding it. Tables of
/// plug-in modules are left to their modules. Must not be called inside a transaction: every definition is committed
/// by itself. Throws data::DatabaseError.
void createHostSchema(data::Connection &connection);

} // namespace host
