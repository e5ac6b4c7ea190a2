#pragma once
#include <QStringList>

namespace data {

/// `text` in single quotes, embedded quotes doubled: a literal for SQL built as text.
inline QString quoted(const QString &text)
{
    QString doubled = text;
    return QLatin1Char('\'') + doubled.replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
}

/// `query` with only those of its columns that are named: the others, text blobs among them, are never fetched nor
/// sorted along. Rows and order are those of `query`.
QString limitedTo(const QStringList &columns, const QString &query);

/// Verb and object of a statement ("DELETE FROM MOVI_MAGA") without any value, for the log.
QString statementKind(const QString &sql);

} // namespace data
