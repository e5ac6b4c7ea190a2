#include "platform/data/RecordUses.h"

#include "platform/data/Catalogue.h"
#include "platform/data/Connection.h"

using namespace Qt::StringLiterals;

namespace data {

namespace {

// Libraries register while they load, before main(): the list must exist at its first use.
QList<QList<RecordUse> (*)()> registered;

QList<RecordUse> all()
{
    QList<RecordUse> uses;
    for (const auto &ofOwner : std::as_const(registered))
        uses += ofOwner();
    return uses;
}

int countOf(const RecordUse &use, int id, Connection &connection)
{
    return connection
        .select(u"SELECT COUNT(*) AS NUM FROM %1 WHERE %2"_s.arg(use.table, use.condition), {{u"ID"_s, id}})
        .integer(0, u"NUM");
}

} // namespace

void registerUses(QList<RecordUse> (*uses)())
{
    registered.append(uses);
}

QStringList usesOf(const QString &table, int id, Connection &connection)
{
    QStringList lines;
    for (const RecordUse &use : all()) {
        if (use.of != table || !hasTable(connection, use.table))
            continue;
        if (const int count = countOf(use, id, connection); count > 0)
            lines.append(u"%1: %2"_s.arg(use.what).arg(count));
    }
    return lines;
}

} // namespace data
