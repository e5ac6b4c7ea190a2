#pragma once
#include "host/schema/HostSchema.h"
#include "platform/data/ConnectionString.h"

namespace host {

/// Makes a database of this program ready for a session: loads the modules of the program's folder, copies an embedded
/// database that has to be upgraded by host or modules, and upgrades the host's tables. The modules upgrade theirs when
/// they start. Nobody in this program may have it open. Throws core::Error; a failed copy leaves it as it was.
void upgradeHost(const data::DatabaseAddress &address, const QList<schema::Step> &steps = hostSteps());

} // namespace host
