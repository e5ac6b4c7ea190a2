#pragma once

namespace host {
class Session;
}

namespace tour {

class Visit;

/// The module's main job on the demonstration data of `session`: two goods receipts, a delivery note at average cost,
/// what changes and what stays when it is saved again, prints, registers, deletion.
void tourWarehouse(Visit &visit, host::Session &session);

} // namespace tour
