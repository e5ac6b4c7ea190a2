#pragma once
#include <QList>
#include <QString>
#include <QVariant>

namespace core {

/// A column of a list on its way out of the program.
struct TableColumn
{
    QString header;
    int places = 2; ///< decimals of its numbers (0 to 6); integers show none
    bool currency = false;
    int width = 100; ///< pixels on screen
};

/// A list as values instead of as drawn texts: QString, int, qint64, double, bool (shown as "Sì" and "No"), QDate,
/// QTime, and an invalid QVariant for an empty cell. Every row has a value for each column.
struct Table
{
    QString title;
    QList<TableColumn> columns;
    QList<QVariantList> rows;
};

/// The decimals with which a value is written: none for integers, the column's for others.
int placesOf(const QVariant &value, const TableColumn &column);
/// A value that is written as a number.
bool isNumber(const QVariant &value);
/// The text of a value that is no number: dates as "dd/MM/yyyy", times as "HH:mm:ss", flags as "Sì" or "No".
QString plainText(const QVariant &value);

} // namespace core
