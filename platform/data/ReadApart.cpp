#include "platform/data/ReadApart.h"

#include "platform/data/ConnectionString.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/Driver.h"

namespace data {

Rows readApart(const QString &connectionString, const QString &sql, core::Progress &progress)
{
    const std::unique_ptr<Driver> driver = openDriver(driverSettings(connectionString));
    const core::Interruption interruption(progress, [&driver] { driver->cancel(); });
    try {
        progress.check();
        const std::unique_ptr<Statement> statement = driver->prepare(sql, View::OneMoment);
        statement->execute({});
        Rows rows(statement->columns(), {});
        for (QVariantList row; statement->next(row);) {
            rows.mutableValues().append(row);
            progress.check();
        }
        return rows;
    } catch (const DatabaseError &) {
        // What the cancelled query says is no error.
        progress.check();
        throw;
    }
}

} // namespace data
