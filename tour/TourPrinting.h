#pragma once

class QWidget;

namespace host {
class Session;
}

namespace tour {

class Visit;

/// The part of the tour that prints: `note`, an open delivery note that is saved, an invoice and the stock reports, to
/// PDF files in the tour's folder, and their pages as pictures when the tool for that is installed.
void tourPrinting(Visit &visit, host::Session &session, const QWidget *note);

} // namespace tour
