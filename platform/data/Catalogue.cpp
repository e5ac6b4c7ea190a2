#include "platform/data/Catalogue.h"

#include "platform/data/Connection.h"

using namespace Qt::StringLiterals;

namespace data {

bool hasTable(Connection &connection, const QString &name)
{
    return !connection
                .select(u"SELECT 1 AS NUM FROM RDB$RELATIONS WHERE RDB$RELATION_NAME = :TABELLA"_s,
                        {{u"TABELLA"_s, name}})
                .isEmpty();
}

} // namespace data
