#include "host/registers/RegisterUses.h"

#include "platform/core/Messages.h"
#include "platform/data/Catalogue.h"
#include "platform/data/Connection.h"

using namespace Qt::StringLiterals;

namespace host {

QStringList usesOf(const QList<RegisterUse> &uses, int id, data::Connection &connection)
{
    QStringList lines;
    for (const RegisterUse &use : uses) {
        if (!data::hasTable(connection, use.table))
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
    const auto refusal = [&] { return spec.refuseDeletion ? spec.refuseDeletion(id, connection) : QString(); };
    if (const QString text = refusal(); !text.isEmpty()) {
        core::warn(owner, text);
        return false;
    }
    if (!core::confirmDeletion(owner))
        return false;
    data::Transaction transaction(connection);
    // Another workstation may have used the record while the question stood on the screen.
    const bool unused = usesOf(spec.uses, id, connection).isEmpty() && refusal().isEmpty();
    if (unused) {
        for (const QString &statement : spec.deletedWith)
            connection.run(statement, {id});
        connection.run(u"DELETE FROM %1 WHERE %2 = ?"_s.arg(spec.table, spec.key), {id});
    }
    transaction.commit();
    if (!unused)
        core::warn(owner,
                   u"Non è più possibile eliminare %1:\n\rnel frattempo un'altra postazione ha cambiato i dati."_s.arg(
                       spec.oneRecord));
    return unused;
}

} // namespace host
