#pragma once
#include "platform/schema/Step.h"

#include <QMap>

namespace schema {

/// What TABLE_VERSION records: the version of each object. Throws data::DatabaseError.
QMap<QString, QString> recordedVersions(data::Connection &connection);

/// True when runSteps() would change a schema that is there: one of the objects is recorded, and a step is due. Where
/// no object is recorded, the steps only make what is new. Throws data::DatabaseError.
bool isUpgradeDue(data::Connection &connection, const QList<Step> &steps);

/// What is done about a step that failed. Its transaction is over, so a message box may be shown; what this throws ends
/// the run. Called while the error is being handled: "throw;" passes it on.
using FailureHandler = std::function<void(const Step &step, const std::exception &error)>;

/// Runs `work` in a thread, shows how far it is and lets the user cancel it; throws what it throws, core::Cancelled
/// when it was cancelled.
using LongWork = std::function<void(core::Progress &)>;
using LongRunner = std::function<void(const LongWork &work)>;

/// Runs, in their order, the steps whose object is at the step's guard version, each in a transaction that also records
/// the new version in TABLE_VERSION. A failing step leaves nothing of itself; when `failed` returns, the next ones run.
/// A step whose definitions the database could not make at the COMMIT is tried once more before it counts as failed.
/// A step that takes long is given to `runLong`, if there is one, with a connection of its own, and once; cancelled, it
/// counts as failed. Throws data::DatabaseError when the version table cannot be read.
void runSteps(data::Connection &connection, const QList<Step> &steps, const FailureHandler &failed,
              const LongRunner &runLong = {});

} // namespace schema
