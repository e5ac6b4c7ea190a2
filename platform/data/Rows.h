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

/// The rows of one finished query. Values are QString, qint64/int, double, QDate, QTime or, for NULL, an invalid
/// QVariant; text blobs arrive as QString.
class Rows
{
public:
    Rows() = default;
    Rows(QList<Column> columns, QList<QVariantList> values)
        : columns_(std::move(columns))
        , values_(std::move(values))
    {
    }

    const QList<Column> &columns() const { return columns_; }
    /// Position of `column` (compared without case), or -1.
    int indexOf(QStringView column) const;
    qsizetype size() const { return values_.size(); }
    bool isEmpty() const { return values_.isEmpty(); }

    /// Value of `column` in `row` (from 0). Throws core::Error for a column that the query does not have.
    const QVariant &at(qsizetype row, QStringView column) const;
    QString text(qsizetype row, QStringView column) const { return at(row, column).toString(); }
    /// NULL reads as 0.
    int integer(qsizetype row, QStringView column) const { return at(row, column).toInt(); }
    double number(qsizetype row, QStringView column) const { return at(row, column).toDouble(); }

    const QVariantList &values(qsizetype row) const { return values_.at(row); }
    QList<QVariantList> &mutableValues() { return values_; }

    /// Orders the rows by the integer in `column`, rows of equal value staying as they came.
    void sortByInteger(QStringView column);

private:
    int require(QStringView column) const;

    QList<Column> columns_;
    QList<QVariantList> values_;
};

} // namespace data
