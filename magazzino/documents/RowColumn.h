#pragma once
#include "magazzino/documents/DocumentRow.h"

#include <QVariant>

#include <variant>

/// The member of a row that a column stands for; a number stands for itself: it is stored and never read.
using RowMember = std::variant<QString DocumentRow::*, std::optional<QString> DocumentRow::*,
                               std::optional<int> DocumentRow::*, std::optional<double> DocumentRow::*, double>;

/// How a column of the rows grid is shown and typed.
enum class RowFormat
{
    Text,
    Memo,      ///< several lines
    ShortText, ///< to the right, like numbers
    Number,    ///< two decimals
    Currency   ///< EUR
};

inline constexpr RowTypes everyRow = RowType::Testo | RowType::NonImponibile | RowType::Articolo | RowType::Servizio;
inline constexpr RowTypes rowsWithAmounts = RowType::NonImponibile | RowType::Articolo | RowType::Servizio;
inline constexpr RowTypes rowsOfGoods = RowType::Articolo | RowType::Servizio; ///< and services

/// The largest number that a cell takes.
inline constexpr double largestNumber = 99'999'999'999.99;

/// A column of document rows: all that reading, storing, showing and typing need to know of it.
struct RowColumn
{
    QString column; ///< of the row table
    RowMember member = 0.0;
    RowTypes types = everyRow; ///< rows that have a value; the others store null and show nothing
    RowTypes editable = {};    ///< rows in which the user may type
    RowFormat format = RowFormat::Text;
    QString header = {};
    int width = 0; ///< pixels, or per cent of the usable width; 0 takes the rest
    bool percent = false;
    double maximum = largestNumber; ///< of a typed number; the least one is 0
    bool zeroAllowed = true;        ///< quantity 0 is refused while a price of 0 is fine; the asymmetry is intended
    QString refusal = {};           ///< what is said of a number out of range
    RowTypes greyed = {};           ///< rows whose cell is grey
    std::function<QString(const DocumentRow &)> hint = {}; ///< over the cell

    /// Is it a number, with or without a currency sign?
    bool isNumber() const { return format == RowFormat::Number || format == RowFormat::Currency; }
    /// Texts stand at the left, everything else at the right.
    bool isLeftAligned() const { return format == RowFormat::Text || format == RowFormat::Memo; }
};

/// What is stored for a row that has the column; an invalid value stands for null.
QVariant storedValue(const RowColumn &column, const DocumentRow &row);
/// Takes a stored value over into a row that has the column.
void readValue(const RowColumn &column, const QVariant &value, DocumentRow &row);
/// The text of a column that holds one; empty for none and for numbers.
QString textOf(const RowColumn &column, const DocumentRow &row);
/// The number of a column that holds one; null for the others.
std::optional<double> DocumentRow::*numberOf(const RowColumn &column);
