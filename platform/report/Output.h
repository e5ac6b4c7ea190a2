#pragma once
#include <QString>

class QPrinter;
namespace core {
class Progress;
}

namespace report {

class Document;
class PdfRenderer;

/// Writes `document` as a PDF, its title in the metadata. The file appears complete or not at all. Throws core::Error
/// when it cannot be written, and core::Cancelled when `progress` was cancelled before.
void writePdf(const Document &document, const QString &path, const PdfRenderer &settings,
              core::Progress *progress = nullptr);

/// Prints the pages that `printer` was told to (all, or its fromPage() to toPage()). Throws core::Error when it
/// refuses.
void printDocument(const Document &document, QPrinter &printer);

/// `title` as the name of a file, without the characters that some file systems refuse.
QString fileNameOf(const QString &title);

/// `path` with ".pdf" at its end.
QString withPdfExtension(const QString &path);

} // namespace report
