#pragma once
#include "magazzino/MMGUtils.h"
#include "magazzino/documents/StampeDocumenti.h"
#include "platform/data/DataSet.h"

#include <QHash>

/// How the rows of a document are read from and written to the database. All of it throws data::DatabaseError.

/// The newest electronic file that was written of a document.
struct FileScritto
{
    QString nome;
    QString stato;
    bool modificata = false; ///< the document was saved again since
};

/// What is stored of a document elsewhere than in its header and its rows.
struct BesideRows
{
    QHash<int, double> costs;           ///< per unit (EUR) by row key, where the movements alone hold them
    std::optional<StampaFatta> printed; ///< the last time, moment and hash of the data alone; nothing if it never was
    std::optional<FileScritto> file;
};

/// Of the document with key `id`, in one query.
BesideRows readBesideRows(const DocumentKind &kind, int id);

/// The rows of a document, from its open rows data set that stands on its first row; `costs` as from
/// readBesideRows().
QList<DocumentRow> readRows(const DocumentKind &kind, const QHash<int, double> &costs, data::DataSet &stored);

/// The VAT rates of the rows as they are in the register now, by key; those that are gone are left out.
QHash<int, TAliquotaIVA> vatRatesOf(const QList<DocumentRow> &rows);

/// Writes all rows of a document anew with `rates`, as from vatRatesOf(), and for each article row its movement: what
/// an earlier save wrote goes first. The caller owns the transaction.
void rewriteRows(const DocumentKind &kind, const DocumentHead &document, const QList<DocumentRow> &rows,
                 const QHash<int, TAliquotaIVA> &rates, data::DataSet &stored);
