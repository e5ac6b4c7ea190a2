#pragma once
#include "platform/core/Progress.h"

#include <QPrinter>
#include <QStringList>

namespace report {

class Document;
class PdfRenderer;

/// `document` as a PDF, its title in the metadata; `copy` is the label of the copy, empty for none. Throws
/// core::Cancelled when `progress` was cancelled before.
QByteArray pdfContent(const Document &document, const PdfRenderer &settings, core::Progress *progress = nullptr,
                      const QString &copy = {});

/// Writes that to a file, which appears complete or not at all. Throws core::Error when it cannot be written.
void writePdf(const Document &document, const QString &path, const PdfRenderer &settings,
              core::Progress *progress = nullptr, const QString &copy = {});

/// Prints the pages that `printer` was told to (all, or its fromPage() to toPage()), once for each label of `copies`.
/// Throws core::Error when it refuses, and core::Cancelled once `progress` was cancelled: a file is not written then,
/// but a printer has the pages before.
void printDocument(const Document &document, QPrinter &printer, const QStringList &copies = {QString()},
                   core::Progress *progress = nullptr);

/// `title` as the name of a file: without the characters that some file systems refuse, blanks or full stops at its
/// ends, and not too long for any of them.
QString fileNameOf(const QString &title);

/// `path` with ".pdf" at its end.
QString withPdfExtension(const QString &path);

} // namespace report
