#pragma once

namespace data {
class Connection;
}

/// Demonstration data of an invented firm, the same at every run. Each routine works in one transaction of its own.
namespace host {

/// Fills the host's tables of a new database: articles, services, customers, the tables they refer to, the company,
/// and the users MAGAZZINIERE and UFFICIO beside AMMINISTRATORE. Throws data::DatabaseError.
void insertDemoMasterData(data::Connection &connection);

/// Fills the warehouse module's suppliers, carriers, transport types and transport reasons, each table only when it
/// exists and is empty, and grants the view of invoices to the role of UFFICIO. Call it after the module has created
/// its tables. Throws data::DatabaseError.
void insertDemoWarehouseData(data::Connection &connection);

} // namespace host
