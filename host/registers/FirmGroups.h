#pragma once
#include "host/FirmFields.h"
#include "platform/ui/RegisterSpec.h"

namespace host {

/// The boxes "Anagrafica", "Dati fiscali" and "Contatti" of the page "Generale", with what a kind of firm has, and the
/// page of the electronic invoice for those that have something there.
QList<ui::RegisterGroup> firmGroups(FirmKind kind);

} // namespace host
