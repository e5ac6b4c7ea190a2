#pragma once
#include <QStringList>
#include <QVariantMap>

namespace data {

/// `text` in single quotes, embedded quotes doubled: a literal for SQL built as text.
inline QString quoted(const QString &text)
{
    QString doubled = text;
    return QLatin1Char('\'') + doubled.replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
}

/// What UPPER(column) is compared with to find `placeholder` whatever its case; bind searchedText() to it. The database
/// capitalises both sides, since it leaves letters as they are of which QString::toUpper() makes two ("ß").
QString inCapitals(const QString &placeholder = QStringLiteral("?"));
/// `text` for inCapitals(). One that is longer than any column is missing there, so that it is found nowhere; the
/// engine would refuse it.
QVariant searchedText(const QString &text);

/// `text` in the database's capitals, for comparing what is not in the database: each letter by itself becomes one.
QString capitalsOf(const QString &text);

/// True for what is written as NULL: no value, or a date or time that is none. A text without characters is none of
/// these, whether QString tells it from an empty one or not.
bool isMissing(const QVariant &value);

/// The statement with NULL in the place of each "?" whose value is missing; only the other values stay in `values`.
///
/// The driver drops a missing value that is bound to a required column, so that 0, an empty text or a day of 1858 would
/// be stored. Written out it comes to the database, which refuses it, unless a trigger puts a value there.
QString withNullsWritten(const QString &sql, QVariantList &values);
/// The same for ":NAME".
QString withNullsWritten(const QString &sql, QVariantMap &values);

/// `query` with only those of its columns that are named: the others, text blobs among them, are never fetched nor
/// sorted along. Rows and order are those of `query`.
QString limitedTo(const QStringList &columns, const QString &query);

/// Verb and object of a statement ("DELETE FROM MOVI_MAGA") without any value, for the log.
QString statementKind(const QString &sql);

} // namespace data
