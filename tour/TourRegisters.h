#pragma once

namespace host {
class Session;
}

namespace tour {

class Visit;

/// The part of the tour that keeps the module's registers (enters, finds, changes and deletes one supplier, carrier,
/// transport type and transport reason), enters a load and an issue by hand and opens the lists of documents.
void tourRegisters(Visit &visit, host::Session &session);

} // namespace tour
