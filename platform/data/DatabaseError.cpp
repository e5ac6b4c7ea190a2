#include "platform/data/DatabaseError.h"

using namespace Qt::StringLiterals;

namespace data {

namespace {

const QString diskFull = u"Il disco è pieno."_s;

// The system's words, which an embedded engine and a server pass on.
bool tellsFullDisk(const QString &text)
{
    return text.contains(u"No space left on device"_s) || text.contains(u"Disk quota exceeded"_s);
}

} // namespace

DatabaseError::DatabaseError(const QString &databaseText, const QString &statement, Refusal refusal)
    : Error(tellsFullDisk(databaseText) ? diskFull : databaseText,
            tellsFullDisk(databaseText) ? statement + u": "_s + databaseText : statement)
    , refusal_(refusal)
{
}

bool DatabaseError::isDiskFull() const
{
    return text() == diskFull;
}

} // namespace data
