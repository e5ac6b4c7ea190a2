#include "platform/schema/Engine.h"

#include "platform/core/Log.h"
#include "platform/data/Connection.h"
#include "platform/data/DataSet.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/Latest.h"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace schema {

namespace {

const QString versionTable = u"TABLE_VERSION"_s;
const QString object = u"TABELLA"_s;
const QString version = u"VERSIONE"_s;
const QString allVersions = u"SELECT * FROM TABLE_VERSION"_s;

// `recorded` is the object's version, if it has one.
bool isDue(const Step &step, const std::optional<QString> &recorded)
{
    return step.fromVersion.isEmpty() ? !recorded : recorded == step.fromVersion;
}

// Once for each step, of which hardly one is due: one turn of the network instead of three.
void readAgain(data::DataSet &versions)
{
    const data::LatestRows latest;
    versions.requery();
}

// Stands on the object's row when there is one.
std::optional<QString> versionOf(data::DataSet &versions, const QString &name)
{
    if (!versions.locate(object, name))
        return {};
    return versions.text(version);
}

void record(data::DataSet &versions, const Step &step)
{
    if (step.fromVersion.isEmpty()) {
        versions.append();
        versions.setValue(object, step.object);
    } else {
        versions.edit();
    }
    versions.setValue(version, step.toVersion);
    versions.updateBatch();
}

void write(data::Connection &connection, data::DataSet &versions, const Step &step, core::Progress &progress)
{
    data::Transaction transaction(connection);
    for (const QString &statement : step.statements) {
        connection.execute(statement);
        progress.check();
    }
    if (step.action)
        step.action(connection, progress);
    record(versions, step);
    transaction.commit();
}

// After a power failure in the middle of a definition's COMMIT the database refuses the next definition, in every new
// connection again. In the connection in which it has refused it, it takes it the second time, once the first one is
// rolled back. Whatever else it refuses, it would refuse again.
void writeTryingTwice(data::Connection &connection, data::DataSet &versions, const Step &step)
{
    core::Progress unseen;
    try {
        write(connection, versions, step, unseen);
    } catch (const data::DatabaseError &error) {
        if (error.refusal() != data::Refusal::DefinitionNotMade)
            throw;
        core::logError(u"%1 %2, primo tentativo"_s.arg(step.object, step.toVersion), error);
        versions.requery();
        if (isDue(step, versionOf(versions, step.object)))
            write(connection, versions, step, unseen);
    }
}

void prepareVersions(data::DataSet &versions)
{
    versions.setCommandText(allVersions);
    versions.setUpdateTarget({versionTable, object});
    readAgain(versions);
}

// A connection belongs to its thread.
void writeApart(const QString &database, const Step &step, core::Progress &progress)
{
    data::Connection own(database);
    data::DataSet versions(&own);
    prepareVersions(versions);
    if (isDue(step, versionOf(versions, step.object)))
        write(own, versions, step, progress);
}

void run(data::Connection &connection, data::DataSet &versions, const Step &step, const LongRunner &runLong)
{
    if (runLong && step.takesLong && step.takesLong(connection))
        runLong([&](core::Progress &progress) { writeApart(connection.connectionString(), step, progress); });
    else
        writeTryingTwice(connection, versions, step);
    // A table is known to other statements only from here on. Rows that fail now leave it created and recorded, as
    // intended.
    for (const QString &statement : step.following)
        connection.execute(statement);
}

} // namespace

QMap<QString, QString> recordedVersions(data::Connection &connection)
{
    const data::Rows rows = connection.select(allVersions);
    QMap<QString, QString> versions;
    for (qsizetype row = 0; row < rows.size(); ++row)
        versions.insert(rows.text(row, object), rows.text(row, version));
    return versions;
}

bool isUpgradeDue(data::Connection &connection, const QList<Step> &steps)
{
    const QMap<QString, QString> versions = recordedVersions(connection);
    const auto recorded = [&versions](const Step &step) {
        const auto found = versions.find(step.object);
        return found == versions.end() ? std::nullopt : std::optional(*found);
    };
    return std::any_of(steps.begin(), steps.end(), recorded) &&
           std::any_of(steps.begin(), steps.end(), [&](const Step &step) { return isDue(step, recorded(step)); });
}

void runSteps(data::Connection &connection, const QList<Step> &steps, const FailureHandler &failed,
              const LongRunner &runLong)
{
    data::DataSet versions(&connection);
    prepareVersions(versions);
    for (const Step &step : steps) {
        readAgain(versions);
        if (!isDue(step, versionOf(versions, step.object)))
            continue;
        try {
            run(connection, versions, step, runLong);
        } catch (const std::exception &error) {
            failed(step, error);
        }
    }
}

} // namespace schema
