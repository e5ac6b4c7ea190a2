#pragma once
#include "platform/data/ConnectionString.h"

#include <QMap>

namespace host {

/// Copies an embedded database before its schema is upgraded to
/// "NAME.prima-dell-aggiornamento-YYYYMMDD-HHMMSS-MARK.fdb" beside it (time of this machine), for its owner alone, and
/// removes all but the three newest of these copies. MARK stands for `versions`, those of all its objects: where there
/// is a copy of a database at the same versions none is made, so a step that fails at every start does not push out the
/// copies that are worth something.
///
/// Nobody may have the database open; who opens it meanwhile is kept out. Throws core::Error and leaves nothing then.
void copyBeforeUpgrade(const data::DatabaseAddress &database, const QMap<QString, QString> &versions);

} // namespace host
