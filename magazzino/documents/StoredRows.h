#pragma once
#include "magazzino/MMGUtils.h"
#include "magazzino/documents/DocumentKind.h"
#include "platform/data/DataSet.h"

#include <QHash>

/// How the rows of a document are read from and written to the database. Both throw data::DatabaseError.

/// Cost per unit (EUR) by row key, of the rows of the document with key `id`, where the movements alone hold it.
QHash<int, double> costsInMovements(const DocumentKind &kind, int id);

/// The rows of a document, from its open rows data set that stands on its first row; `costs` as from
/// costsInMovements().
QList<DocumentRow> readRows(const DocumentKind &kind, const QHash<int, double> &costs, data::DataSet &stored);

/// The VAT rates of the rows as they are in the register now, by key; those that are gone are left out.
QHash<int, TAliquotaIVA> vatRatesOf(const QList<DocumentRow> &rows);

/// Writes all rows of a document anew with `rates`, as from vatRatesOf(), and for each article row its movement: what
/// an earlier save wrote goes first. The caller owns the transaction.
void rewriteRows(const DocumentKind &kind, const DocumentHead &document, const QList<DocumentRow> &rows,
                 const QHash<int, TAliquotaIVA> &rates, data::DataSet &stored);
