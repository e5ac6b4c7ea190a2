#pragma once
#include "platform/report/Document.h"
#include "platform/report/Report.h"

#include <QString>

class QWidget;

namespace host {

/// Asks for printer and pages, and prints every copy of `subject`; true when it was printed. The printer that was
/// chosen last for the subject's kind is proposed. `owner` may be null. Throws core::Error when the printer refuses,
/// and core::Cancelled when the user gave it up, who is told what may come out all the same.
bool printWithDialog(const report::Document &document, const report::Subject &subject, QWidget *owner);

/// From now on the printers that are chosen are kept in `settingsFile`; nowhere while it is empty.
void keepPrinters(const QString &settingsFile);
/// Name of the printer that was chosen last for `kind`; empty when none was.
QString keptPrinter(const QString &kind);
/// Keeps a printer's name for `kind`. When the file cannot be written the status bar says so: this comes after
/// printing, which has more to do.
void keepPrinter(const QString &kind, const QString &printer);

} // namespace host
