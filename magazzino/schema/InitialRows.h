#pragma once

#include "platform/data/Connection.h"

/// What a new database gets once the module has made its tables. Only empty tables are filled, in one transaction;
/// throws data::DatabaseError.
namespace schema {

/// The demonstration firm's suppliers, carriers, transport types and reasons; the office sees invoices.
void insertDemoRows(data::Connection &connection);
/// Transport types and reasons as most firms have them.
void insertCommonRows(data::Connection &connection);

} // namespace schema
