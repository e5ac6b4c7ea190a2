#pragma once
#include "platform/schema/Step.h"

namespace schema {

/// Runs the due ones of these steps, see runSteps(). A failing step is reported in a message box and the next ones run.
/// Throws only when the version table cannot be read.
void eseguiPassi(data::Connection &connection, const QList<Step> &elenco);

} // namespace schema
