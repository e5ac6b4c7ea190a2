#pragma once

class QObject;

namespace host {

class Session;
class TourDriver;

/// The part of the tour with accompanying invoices: enters one with rows of every kind, discounts and two VAT rates,
/// compares totals, rows and movements, exports it, finds it by a row's description, marks it paid and shows that a
/// user without rights is refused. `module` is the warehouse module; the article issued is in stock already.
void tourInvoices(TourDriver &driver, Session &session, QObject *module);

} // namespace host
