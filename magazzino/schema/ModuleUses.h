#pragma once
#include "platform/data/RecordUses.h"

namespace schema {

/// Where the module's tables use records of the host's. Documents and movements name articles, services and customers
/// by their code, compared without case.
QList<data::RecordUse> moduleUses();

} // namespace schema
