#include "platform/ui/RegisterDeletion.h"

#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/data/Connection.h"
#include "platform/data/RecordUses.h"

using namespace Qt::StringLiterals;

namespace ui {

bool deleteRegisterRecord(const RegisterSpec &spec, int id, data::Connection &connection, QObject *owner)
{
    const QStringList lines = data::usesOf(spec.table, id, connection);
    if (!lines.isEmpty()) {
        core::warn(owner, core::tr("Non è possibile eliminare %1,\n\resistono dei dati correlati:\n\r%2")
                              .arg(spec.oneRecord, lines.join(u"\n\r"_s)));
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
    const bool unused = data::usesOf(spec.table, id, connection).isEmpty() && refusal().isEmpty();
    if (unused) {
        for (const QString &statement : spec.deletedWith)
            connection.run(statement, {id});
        connection.run(u"DELETE FROM %1 WHERE %2 = ?"_s.arg(spec.table, spec.key), {id});
    }
    transaction.commit();
    if (!unused)
        core::warn(
            owner,
            core::tr("Non è più possibile eliminare %1:\n\rnel frattempo un'altra postazione ha cambiato i dati.")
                .arg(spec.oneRecord));
    return unused;
}

} // namespace ui
