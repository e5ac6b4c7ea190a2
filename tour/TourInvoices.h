#pragma once

namespace host {
class Session;
}

namespace tour {

class Visit;

/// The part of the tour with accompanying invoices: enters one with rows of every kind, discounts and two VAT rates,
/// compares totals, rows and movements, exports it, finds it by a row's description, marks it paid and shows that a
/// user without rights is refused. The article issued is in stock already.
void tourInvoices(Visit &visit, host::Session &session);

} // namespace tour
