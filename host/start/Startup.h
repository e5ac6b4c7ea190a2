#pragma once
#include "host/Application.h"

namespace host {

/// Opens databases and runs sessions one after another, as the user switches between them, until the program ends. What
/// is remembered, new databases and backups lie in `folder`. Throws core::Error for a database named on the command
/// line that does not open.
void runSessions(const StartOptions &options, const QString &folder);

/// Starts the modules on the database, so that its schema is brought up to date, without a window. Throws core::Error.
void upgradeDatabase(const StartOptions &options, const QString &folder);

} // namespace host
