#pragma once
#include <QStringList>

namespace data {
class Connection;
}

namespace test {

/// Makes in an empty database what the first release left behind: its definitions as text, its versions, the rows that
/// every database has.
void createFirstRelease(data::Connection &connection);

/// A query for everything that the schema consists of, one text a row: columns with place, type and default, indexes,
/// triggers, generators, recorded versions.
QString schemaQuery();

} // namespace test
