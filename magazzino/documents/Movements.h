#pragma once
#include "magazzino/documents/DocumentKind.h"

/// The stock movements that documents make. They point at their document by its kind's name and its key. Everything
/// here throws data::DatabaseError and leaves the transaction to the caller.

/// Deletes the movements that an earlier save of the document with key `id` wrote.
void deleteMovements(const DocumentKind &kind, int id);

/// Writes the movements of article rows, whose `idRiga` is the key that they were stored under. Errors carry
/// "[AggiornaMoviMaga]" or "[GetValoreScaricoCostoMedio]".
void writeMovements(const DocumentKind &kind, const DocumentHead &document, const QList<DocumentRow> &rows);
