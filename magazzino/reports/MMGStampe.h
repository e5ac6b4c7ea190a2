#pragma once
#include "host/Corvane3Impl.h"
#include "platform/data/Rows.h"

struct DocumentKind;

/// Printing of documents through the module's report project.

/// Prints the document with key `id`; without such a document the form comes out empty. `file` is used only when the
/// destination is the PDF file; every other destination goes to the preview. A VAT-exempt invoice gets its own layout
/// with the note of the option FATT_IVA_ESENTE_NOTE. Errors carry the routine that the kind names.
void StampaDocumento(const DocumentKind &kind, int id, const QString &file, TKxReportDestination destination);
/// The same for a delivery note. Errors carry "[StampaDdTScarico]".
void StampaDdTScarico(int id, const QString &file, TKxReportDestination destination);
/// The same for an accompanying invoice. Errors carry "[StampaFatturaAccompagnatoria]".
void StampaFatturaAccompagnatoria(int id, const QString &file, TKxReportDestination destination);

/// What list, form and preview of a document propose as the name of its PDF file: "D.d.T. di scarico 12-2026".
/// Numbers begin anew every year.
QString NomePDF(const QString &documentKind, int numero, QDate data);

/// Runs a report of the module's project to the destination that its report system has, normally the preview. `heading`
/// stands below the report's title.
void StampaElenco(const QString &report, const QString &heading);

/// Shows the contents of an electronic invoice (columns SEZIONE, VOCE, VALORE) as pages. `name` proposes the PDF file's
/// name and tells one invoice's preview from another's; `heading` stands below the title.
void StampaFatturaElettronica(const data::Rows &contents, const QString &name, const QString &heading);
