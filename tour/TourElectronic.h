#pragma once
#include "tour/Visit.h"

namespace host {
class Session;
}

namespace tour {

/// The invoices as files for the exchange system: an exempt one beside that of tourInvoices(), the window, the files.
void tourElectronic(Visit &visit, host::Session &session);

} // namespace tour
