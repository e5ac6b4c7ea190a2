#include "platform/data/DatabaseError.h"

#include "platform/core/Translation.h"

using namespace Qt::StringLiterals;

namespace data {

namespace {

QString diskFull()
{
    return core::tr("Il disco è pieno.");
}

QString connectionLost()
{
    return core::tr("Il server non risponde oppure il collegamento è caduto.");
}

// The system's words, which an embedded engine and a server pass on.
bool tellsFullDisk(const QString &text)
{
    return text.contains(u"No space left on device"_s) || text.contains(u"Disk quota exceeded"_s);
}

// What the user can do something about, in words of our own; empty for everything else.
QString ownWords(const QString &databaseText, Refusal refusal)
{
    if (tellsFullDisk(databaseText))
        return diskFull();
    return refusal == Refusal::ConnectionLost ? connectionLost() : QString();
}

QString contextFor(const QString &databaseText, const QString &statement, Refusal refusal)
{
    return ownWords(databaseText, refusal).isEmpty() ? statement : statement + u": "_s + databaseText;
}

} // namespace

DatabaseError::DatabaseError(const QString &databaseText, const QString &statement, Refusal refusal)
    : Error(ownWords(databaseText, refusal).isEmpty() ? databaseText : ownWords(databaseText, refusal),
            contextFor(databaseText, statement, refusal))
    , refusal_(refusal)
{
}

bool DatabaseError::isDiskFull() const
{
    return text() == diskFull();
}

} // namespace data
