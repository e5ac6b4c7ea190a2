#pragma once
#include "magazzino/documents/DocumentKind.h"
#include "platform/data/Rows.h"

#include <QDateTime>

#include <optional>

/// What was printed of stored documents. All of it throws data::DatabaseError.

/// A document that was printed or written to a file.
struct StampaFatta
{
    QDateTime il;
    QString impronta;     ///< of the document's data, see improntaDocumento()
    QString file;         ///< path in the archive; empty when it was not filed
    QString improntaFile; ///< hexadecimal SHA-256 of that file
};

/// The last time that the document with key `id` was printed; nothing when it never was.
std::optional<StampaFatta> ultimaStampa(const DocumentKind &kind, int id);

/// Notes that the document with key `id` was printed, by the current user.
void registraStampa(const DocumentKind &kind, int id, const StampaFatta &stampa);

/// Hexadecimal SHA-256 of all that is stored of a document, its keys aside, which every save gives anew. A column that
/// holds nothing does not count, so that columns may be added. `testata` is the header's row, `righe` those of its rows
/// in any order.
QString improntaDocumento(const DocumentKind &kind, const data::Rows &testata, data::Rows righe);

/// The same of the document with key `id` as it is stored now.
QString improntaAttuale(const DocumentKind &kind, int id);
