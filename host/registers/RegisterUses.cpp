#include "host/registers/RegisterUses.h"

#include "platform/core/Messages.h"
#include "platform/data/Connection.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

bool tableExists(const QString &table, data::Connection &connection)
{
    return !connection
                .select(u"SELECT 1 AS NUM FROM RDB$RELATIONS WHERE RDB$RELATION_NAME = :TABELLA"_s,
                        {{u"TABELLA"_s, table}})
                .isEmpty();
}

} // namespace

QStringList usesOf(const QList<RegisterUse> &uses, int id, data::Connection &connection)
{
    QStringList lines;
    for (const RegisterUse &use : uses) {
        if (!tableExists(use.table, connection))
            continue;
        const int count =
            connection
                .select(u"SELECT COUNT(*) AS NUM FROM %1 WHERE %2"_s.arg(use.table, use.condition), {{u"ID"_s, id}})
                .integer(0, u"NUM");
        if (count > 0)
            lines.append(u"%1: %2"_s.arg(use.what).arg(count));
    }
    return lines;
}

bool deleteRegisterRecord(const RegisterSpec &spec, int id, data::Connection &connection, QObject *owner)
{
    const QStringList lines = usesOf(spec.uses, id, connection);
    if (!lines.isEmpty()) {
        core::warn(owner, u"Non è possibile eliminare %1,\n\resistono dei dati correlati:\n\r%2"_s.arg(
                              spec.oneRecord, lines.join(u"\n\r"_s)));
        return false;
    }
    if (const QString refusal = spec.refuseDeletion ? spec.refuseDeletion(id, connection) : QString();
        !refusal.isEmpty()) {
        core::warn(owner, refusal);
        return false;
    }
    if (!core::confirm(owner, u"Confermare l'eliminazione?"_s))
        return false;
    data::Transaction transaction(connection);
    // Another workstation may have used the record while the question stood on the screen.
    const bool unused = usesOf(spec.uses, id, connection).isEmpty();
    if (unused) {
        for (const QString &statement : spec.deletedWith)
            connection.run(statement, {id});
        connection.run(u"DELETE FROM %1 WHERE %2 = ?"_s.arg(spec.table, spec.key), {id});
    }
    transaction.commit();
    if (!unused)
        core::warn(owner, u"Nel frattempo un'altra postazione ha utilizzato %1."_s.arg(spec.oneRecord));
    return unused;
}

} // namespace host
