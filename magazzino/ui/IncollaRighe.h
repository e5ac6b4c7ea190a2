#pragma once
#include "magazzino/documents/RigheAppunti.h"
#include "magazzino/ui/DocumentRowsModel.h"

/// A row that was pasted, and what became of it.
struct RigaIncollata
{
    RigaLetta letta;
    std::optional<DocumentRow> riga = {}; ///< nothing when the document cannot take it,
    QString esito = {};                   ///< and why
};

/// What `lette` give in a document of `kind`: articles and services with their values of today, over them what was
/// read. Numbers are judged by the rules of the cells of `model`. Throws data::DatabaseError.
QList<RigaIncollata> trovaRighe(const QList<RigaLetta> &lette, const DocumentKind &kind,
                                const DocumentRowsModel &model);
/// Shows what was found and what was not; true when the user wants the rows that were found.
bool confermaRighe(const QList<RigaIncollata> &righe, const DocumentKind &kind, QWidget *owner);
