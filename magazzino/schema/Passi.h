#pragma once
#include "platform/schema/Step.h"

namespace schema {

/// The module's upgrade steps in their order, which is part of the design: later ones depend on the versions that
/// earlier ones leave.
const QList<Step> &passi();

} // namespace schema
