#pragma once
#include <QList>
#include <QString>
#include <QVariant>

namespace data {

struct Column
{
    QString name;        ///< as the database returns it, upper case
    int places = 0;      ///< decimals of a DECIMAL column
    bool isText = false; ///< character column or text blob
    bool isNumber = false;
};

/// The rows of one finished query. Values are QString, qint64/int, double, QDate, QTime, QDateTime or, for NULL, an
/// invalid QVariant; text blobs arrive as QString, others as QByteArray.
class Rows
{
public:
    Rows() = default;
    /// Each list of `values` is one row, in the order of `columns`.
    Rows(QList<Column> columns, QList<QVariantList> values)
        : columns_(std::move(columns))
        , values_(std::move(values))
    {
    }

    /// The columns in the order of the query.
    const QList<Column> &columns() const { return columns_; }
    /// Position of `column` (compared without case), or -1.
    int indexOf(QStringView column) const;
    /// How many rows there are.
    qsizetype size() const { return values_.size(); }
    /// Is there no row?
    bool isEmpty() const { return values_.isEmpty(); }

    /// Value of `column` in `row` (from 0). Throws core::Error for a column that the query does not have.
    const QVariant &at(qsizetype row, QStringView column) const;
    /// NULL reads as an empty text. Throws as at().
    QString text(qsizetype row, QStringView column) const { return at(row, column).toString(); }
    /// NULL reads as 0.
    int integer(qsizetype row, QStringView column) const { return at(row, column).toInt(); }
    /// NULL reads as 0. Throws as at().
    double number(qsizetype row, QStringView column) const { return at(row, column).toDouble(); }

    /// One row, from 0, in the order of columns().
    const QVariantList &values(qsizetype row) const { return values_.at(row); }
    /// All rows, for whoever changes them in place.
    QList<QVariantList> &mutableValues() { return values_; }

    /// Orders the rows by the integer in `column`, rows of equal value staying as they came.
    void sortByInteger(QStringView column);

private:
    int require(QStringView column) const;

    QList<Column> columns_;
    QList<QVariantList> values_;
};

} // namespace data
