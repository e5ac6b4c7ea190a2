#pragma once
#include "platform/core/Progress.h"
#include "platform/data/Connection.h"

#include <QStringList>
#include <functional>

namespace schema {

/// One step on a database's way to the schema that the program needs; Engine.h runs a list of them. Steps that were
/// delivered never change: databases stand behind each of them.
struct Step
{
    QString object;         ///< name in TABLE_VERSION: a table, or what else has a version
    QString fromVersion;    ///< runs when the object is at exactly this version; empty: when the object is absent
    QStringList statements; ///< run in the step's transaction
    QString toVersion;      ///< version recorded in that transaction
    QStringList following;  ///< run one by one after the commit, because they need the table that the step created
    /// Runs in the transaction, behind the statements; throws core::Cancelled when it is no longer wanted.
    std::function<void(data::Connection &, core::Progress &)> action;
    /// May the step take seconds on what is stored now? Then it runs where it can be cancelled, see LongRunner.
    std::function<bool(data::Connection &)> takesLong = {};
};

} // namespace schema
