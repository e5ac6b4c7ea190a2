#pragma once
#include "magazzino/documents/DocumentKind.h"
#include "magazzino/documents/StampeDocumenti.h"
#include "platform/report/Document.h"

/// What becomes of a document besides its pages: copies, the note that it was printed, the file in the archive.

/// A document as it was when its pages were laid out.
struct DocumentoStampato
{
    const DocumentKind *kind = nullptr;
    DocumentHead testata;
    QString intestatario; ///< customer or supplier
    ImprontaDocumento impronta;
};

/// The labels of the copies that are printed of a kind of document, empty texts for copies without one; none for a
/// single copy.
QStringList copieDi(const DocumentKind &kind);

/// Notes that the document was printed and, where there is an archive, files its pages as a PDF. Pages whose data were
/// filed before are not filed again. Errors are shown, none is thrown: the document has been printed.
void annotaStampa(const DocumentoStampato &stampato, const report::Document &pages);
