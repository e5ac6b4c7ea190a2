#pragma once
#include "platform/schema/Engine.h"

namespace schema {

/// The module's upgrade steps in their order, which is part of the design: later ones depend on the versions that
/// earlier ones leave.
const QList<Step> &moduleSteps();

/// Runs the due ones of these steps, see runSteps(). A failing step is reported in a message box and the next ones run.
/// Throws only when the version table cannot be read.
void runModuleSteps(data::Connection &connection, const QList<Step> &steps);

/// How those of them run that take long, from now on; an empty one runs them like the others. A seam: the module's
/// windows are above this layer.
void setLongRunner(LongRunner runner);

} // namespace schema
