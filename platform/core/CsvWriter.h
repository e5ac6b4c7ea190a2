#pragma once
#include "platform/core/Table.h"

namespace core {

/// The table as a CSV file that Italian spreadsheets open as it is: UTF-8 with a byte order mark, semicolons, lines
/// that end with CR LF, decimal commas without thousands separator.
///
/// A text that a spreadsheet would take for a formula (it begins with = + - @, a tab or a carriage return) gets an
/// apostrophe before it; a negative number stays a number.
QByteArray csvText(const Table &table);

/// The rows separated by tabs, as spreadsheets take them from the clipboard; tabs and line breaks within a cell become
/// blanks. With `headers` the captions of the columns lead. Formulas are kept away as in a CSV file.
QString clipboardText(const Table &table, bool headers);

/// A cell's text without the apostrophe that csvText() puts before what looks like a formula.
QString withoutFormulaGuard(const QString &cell);

} // namespace core
