#pragma once
#include "platform/core/Table.h"

namespace core {

/// The table as an Excel workbook with one sheet: bold captions in a first row that stays in sight, columns as wide as
/// on screen, numbers and dates as such, texts always as texts. A character that XML cannot hold becomes U+FFFD. Made
/// in memory. Throws core::Error when it has more rows or a longer text than a sheet can hold.
QByteArray xlsxFile(const Table &table);

} // namespace core
