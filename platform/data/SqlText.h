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

/// How values get into a statement that is put together from pieces: bound to it, or written into the text of those
/// statements whose text is fixed.
class Values
{
public:
    enum class Way
    {
        Bound,
        Written
    };

    explicit Values(Way way)
        : way_(way)
    {
    }

    /// What stands in the statement for `value`, a text, an integer or a date; to be asked in the order of the text.
    QString add(const QVariant &value);
    /// Those that are bound, in the order in which they were added.
    const QVariantList &bound() const { return bound_; }

private:
    Way way_;
    QVariantList bound_;
};

/// What UPPER(column) is compared with to find `placeholder` whatever its case; bind searchedText() to it. The database
/// capitalises both sides, since it leaves letters as they are of which QString::toUpper() makes two ("ß").
QString inCapitals(const QString &placeholder = QStringLiteral("?"));
/// `text` for inCapitals(). One that is longer than any column is missing there, so that it is found nowhere; the
/// engine would refuse it.
QVariant searchedText(const QString &text);

/// `text` in the database's capitals, for comparing what is not in the database: each letter by itself becomes one.
QString capitalsOf(const QString &text);

/// The text `expression` with a value that no index holds. To group by what an index holds, the engine walks all of
/// that index, however few rows are asked for.
inline QString withoutIndex(const QString &expression)
{
    return expression + QLatin1String(" || ''");
}

/// The statement with "?" in the place of each ":NAME", whose names are appended to `names` in their order.
QString positional(const QString &sql, QStringList &names);

/// `query` with only those of its columns that are named: the others, text blobs among them, are never fetched nor
/// sorted along. Rows and order are those of `query`.
QString limitedTo(const QStringList &columns, const QString &query);

/// Tables that a statement, or what stands in a block of statements, writes to; in capitals, perhaps more than once.
QStringList writtenTables(const QString &sql);
/// Those that a query reads.
QStringList readTables(const QString &sql);

/// Verb and object of a statement ("DELETE FROM MOVI_MAGA") without any value, for the log.
QString statementKind(const QString &sql);

} // namespace data
