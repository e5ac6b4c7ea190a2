#pragma once
#include "tests/magazzino/fatture/InvoiceFile.h"

namespace test {

/// What does not add up by hand on the paper of an invoice, or is not what its file says: `layout` is the text of the
/// PDF with its columns kept, `invoice` the file. One line each.
QStringList printFaults(const QString &layout, const Element &invoice);

} // namespace test
