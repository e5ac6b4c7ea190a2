#pragma once

class QObject;

namespace data {
class Connection;
}

namespace host {

class MainWindow;
class TourDriver;

/// The part of the tour that keeps the registers of `module` (enters, finds, changes and deletes one supplier, carrier,
/// transport type and transport reason), enters a load and an issue by hand and opens the lists of documents.
/// `connection` is for looking at what was stored.
void tourRegisters(TourDriver &driver, MainWindow &window, QObject *module, data::Connection &connection);

} // namespace host
