#pragma once

class QObject;
class QWidget;

namespace host {

class Session;
class TourDriver;

/// The part of the tour that prints: `note`, an open delivery note that is saved, an invoice and the stock reports of
/// `module`, to PDF files in the tour's folder, and their pages as pictures when the tool for that is installed.
void tourPrinting(TourDriver &driver, Session &session, QObject *module, QWidget *note);

} // namespace host
