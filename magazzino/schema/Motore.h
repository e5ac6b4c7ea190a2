#pragma once
#include "magazzino/schema/Passi.h"

namespace schema {

/// Runs every step whose object is at the step's guard version, each in a transaction that also records the new
/// version in the host's TABLE_VERSION. A failing step leaves nothing of itself, is reported in a message box and the
/// next ones run. Throws only when the version table cannot be read.
void eseguiPassi(data::Connection &connection, const QList<Passo> &elenco);

} // namespace schema
