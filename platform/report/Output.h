#pragma once
#include <QString>

class QPrinter;

namespace report {

class Document;

/// Writes `document` as a PDF with embedded fonts, its title in the metadata. The file appears complete or not at all.
/// `dpi` is the resolution of its coordinates. Throws core::Error when the file cannot be written.
void writePdf(const Document &document, const QString &path, int dpi);

/// Prints the pages that `printer` was told to (all, or its fromPage() to toPage()). Throws core::Error when it
/// refuses.
void printDocument(const Document &document, QPrinter &printer);

/// `title` as the name of a file, without the characters that some file systems refuse.
QString fileNameOf(const QString &title);

/// `path` with ".pdf" at its end.
QString withPdfExtension(const QString &path);

} // namespace report
