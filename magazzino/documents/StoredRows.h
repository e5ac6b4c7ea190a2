#pragma once
#include "magazzino/documents/DocumentKind.h"

namespace data {
class DataSet;
}

/// How the rows of a document are read from and written to the database. Both throw data::DatabaseError.

/// The rows of the document with key `id`, from its open rows data set that stands on its first row. Costs that the
/// rows do not store come from the movements.
QList<DocumentRow> readRows(const DocumentKind &kind, int id, data::DataSet &stored);

/// Writes all rows of a document anew, and for each article row its movement: what an earlier save wrote goes first.
/// The caller owns the transaction.
void rewriteRows(const DocumentKind &kind, const DocumentHead &document, const QList<DocumentRow> &rows,
                 data::DataSet &stored);
