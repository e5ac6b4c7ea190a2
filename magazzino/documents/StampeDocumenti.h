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
    QString impronta;     ///< of the document's data, see ImprontaDocumento
    QString file;         ///< path in the archive; empty when it was not filed
    QString improntaFile; ///< hexadecimal SHA-256 of that file
};

/// What tells one state of a document from another: hexadecimal SHA-256 of what is stored of it, its keys aside, which
/// every save gives anew. A column that holds nothing does not count, so that columns may be added.
struct ImprontaDocumento
{
    QString valore;    ///< kept with a print; what became of the document (paid, notified, recurring) does not count
    QString diUnTempo; ///< as former versions kept it, with all of that

    /// Was the document in this state when it was printed with `stampata`?
    bool vale(const QString &stampata) const { return stampata == valore || stampata == diUnTempo; }
};

/// The last time that the document with key `id` was printed; nothing when it never was.
std::optional<StampaFatta> ultimaStampa(const DocumentKind &kind, int id);

/// Notes that the document with key `id` was printed, by the current user.
void registraStampa(const DocumentKind &kind, int id, const StampaFatta &stampa);

/// Of a document whose header's row is `testata`, with its rows in any order.
ImprontaDocumento improntaDocumento(const DocumentKind &kind, const data::Rows &testata, data::Rows righe);

/// The same of the document with key `id` as it is stored now.
ImprontaDocumento improntaAttuale(const DocumentKind &kind, int id);
