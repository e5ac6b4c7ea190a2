#pragma once

#include "platform/data/Connection.h"

/// Demonstration data of an invented firm, the same at every run. Each routine works in one transaction of its own.
namespace host {

/// Fills the host's tables of a new database: articles, services, customers, the tables they refer to, the company,
/// and the users MAGAZZINIERE and UFFICIO beside AMMINISTRATORE. Throws data::DatabaseError.
void insertDemoMasterData(data::Connection &connection);

/// What a firm of its own starts with besides: VAT rates, units, payment types, notes for documents, a category of
/// articles. For empty tables;
/// throws data::DatabaseError.
void insertCommonTables(data::Connection &connection);

} // namespace host
