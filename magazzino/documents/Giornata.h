#pragma once
#include "magazzino/documents/DocumentKind.h"

/// What the start page tells of documents and stock.

/// A document as it is listed beside those of other kinds.
struct DocumentoElencato
{
    DocumentHead head;
    QString intestatario; ///< name of its customer or supplier
};

/// The newest documents of a kind, from the newest, at most `most`. Throws data::DatabaseError.
QList<DocumentoElencato> UltimiDocumenti(const DocumentKind &kind, int most);

/// Documents found by what one knows of them, and where to go on looking.
struct DocumentiTrovati
{
    QList<DocumentoElencato> documenti;
    QVariant seguito; ///< invalid when all were looked through
};

/// The documents of a kind, of every year, with this number ("24", "24/2026") or with every word of `testo` in their
/// customer's or supplier's code or name: at most `most`, among the newest, or behind `seguito`. Throws
/// data::DatabaseError.
DocumentiTrovati CercaDocumenti(const DocumentKind &kind, const QString &testo, const QVariant &seguito, int most);
/// The same by the code or description of one of their rows, which `intestatario` holds then.
DocumentiTrovati CercaRighe(const DocumentKind &kind, const QString &testo, const QVariant &seguito, int most);

/// Is there any document of the kind?
bool EsistonoDocumenti(const DocumentKind &kind);
/// Are there so few movements that adding them all up disturbs nobody?
bool PochiMovimenti();
