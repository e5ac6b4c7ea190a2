#pragma once
#include "host/ui/PreviewWindow.h"
#include "magazzino/reports/MMGStampe.h"
#include "platform/report/Document.h"
#include "platform/report/Report.h"
#include "tests/support/Fixtures.h"

/// Documents to print and what came out on paper.
namespace test {

/// A delivery note with `rows` article rows ("ART-001", 1 piece, ...); `header` replaces columns. Returns its key.
int insertNote(data::Connection &connection, int rows, const QVariantMap &header = {});
/// An invoice with `rows` article rows of 10,00 each at 22 %.
int insertInvoice(data::Connection &connection, int rows, const QVariantMap &header = {});
int insertNoteRow(data::Connection &connection, int note, const QVariantMap &columns);
int insertInvoiceRow(data::Connection &connection, int invoice, const QVariantMap &columns);

/// A file that goes with the test program; in the folder MAGAZZINO_TEST_OUTPUT, when that is set, it stays.
QString outputFile(const QString &name);

/// Texts of a PDF as pdftotext reads them from its pages in layout order, one per page.
QStringList pdfPages(const QString &file);
/// The same in the order in which it was painted, so that broken lines follow each other.
QString rawPdfText(const QString &file);
/// All of it with single blanks.
QString pdfText(const QString &file);

} // namespace test
