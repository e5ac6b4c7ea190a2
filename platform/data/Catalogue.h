#pragma once
#include <QString>

namespace data {

class Connection;

/// True when the database has the table `name` (upper case). Throws DatabaseError.
bool hasTable(Connection &connection, const QString &name);

} // namespace data
