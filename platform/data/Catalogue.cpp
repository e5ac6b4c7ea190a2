#include "platform/data/Catalogue.h"

#include "platform/data/Connection.h"

using namespace Qt::StringLiterals;

namespace data {

bool hasTable(Connection &connection, const QString &name)
{
    return connection.finds(u"SELECT 1 AS NUM FROM RDB$RELATIONS WHERE RDB$RELATION_NAME = ?"_s, {name});
}

} // namespace data
