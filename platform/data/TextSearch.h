#pragma once
#include "platform/data/Connection.h"

namespace data {

class Values;

/// Records of which one knows a part of what they are called.
struct SearchedTable
{
    QString from;         ///< a table, or a query in brackets with a name
    QString key;          ///< integer column
    QString text;         ///< expression of what the record is called
    QString detail;       ///< expression of what is told besides
    QStringList searched; ///< text columns
    QString order = {};   ///< behind ORDER BY; the query's own while empty
};

/// The condition that `text` stands somewhere in `column`, whatever its case and accents.
QString containing(const QString &column, const QString &text, Values &values);
/// The condition that every word of `text` stands somewhere in `columns`. True for a text of blanks.
QString containingWords(const QStringList &columns, const QString &text, Values &values);

/// CHIAVE, TESTO and DETTAGLIO of at most `most` records that have every word of `text`. Throws DatabaseError.
Rows findText(Connection &connection, const SearchedTable &table, const QString &text, int most);

} // namespace data
