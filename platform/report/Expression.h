#pragma once
#include "platform/data/Rows.h"

#include <QDateTime>
#include <QHash>
#include <QSet>
#include <QVariantMap>

#include <memory>
#include <vector>

namespace report {

struct ExpressionNode;

/// Everything that a run of a report reads: the rows of its data connections as they were when the run began, the
/// parameters and the time.
class RunData
{
public:
    QHash<QString, data::Rows> connections;
    QVariantMap parameters;
    QDateTime now;

    /// Rows of a connection. Throws core::Error for an unknown one.
    const data::Rows &rows(const QString &connection) const;
    /// Sum of `term` over the first `count` rows of `connection`; NULL counts as 0. All partial sums are kept, so
    /// carried amounts cost nothing per page.
    double sum(const QString &connection, const ExpressionNode &term, qsizetype count) const;

private:
    mutable QHash<const ExpressionNode *, std::vector<double>> sums_;
};

/// Where an expression is evaluated: the row it belongs to and the page it stands on.
struct Scope
{
    const RunData *data = nullptr;
    QString connection; ///< of columns that name none
    qsizetype row = 0;
    int page = 0; ///< from 1
    int pages = 0;
    QString copy = {};         ///< label of the copy that the page belongs to; empty for none
    QString detail;            ///< connection of the report's rows
    qsizetype rowsBefore = 0;  ///< of `detail` that begin on earlier pages
    qsizetype rowsThrough = 0; ///< the same with this page
};

/// A value or condition as a project file writes it.
///
/// Operands: numbers, 'texts', CONNECTION.COLUMN or COLUMN of the band's own row, param.NAME, page, pages, row (from
/// 1), copy, now. Operators: or, and, not, = <> < <= > >=, || (joins texts), + - * /. Functions: if(c, a, b), empty(x),
/// round(x, places), join(separator, a, b, ...) without the empty ones, text(x, format[, places]), count(CONNECTION),
/// sum(CONNECTION, x), and for carried amounts sumBefore(x) and sumThrough(x) over the rows of the pages before and up
/// to this one.
class Expression
{
public:
    Expression() = default;
    /// Throws core::Error when `text` is no expression.
    static Expression parse(const QString &text);
    /// The expression that always gives `text`.
    static Expression literal(const QString &text);

    /// Was nothing written?
    bool isEmpty() const { return !root_; }
    /// NULL is an invalid QVariant. Throws core::Error for unknown connections and columns.
    QVariant evaluate(const Scope &scope) const;
    /// True for an empty expression, a number other than 0 and a text that is not empty.
    bool holds(const Scope &scope) const;
    /// The data connections it names.
    const QSet<QString> &connections() const { return connections_; }

private:
    std::shared_ptr<const ExpressionNode> root_;
    QSet<QString> connections_;
};

/// How a value becomes text.
struct Format
{
    enum class Kind
    {
        Plain,
        Currency, ///< "€ 1.234,50"
        Number,   ///< "1.234,50"
        Decimal,  ///< the same without zeros at the end
        Integer,
        Date,
        Time,
        DateTime
    };
    Kind kind = Kind::Plain;
    int places = 2;
};

/// By its name in project files ("currency"). Throws core::Error for another one.
Format::Kind formatKind(const QString &name);
/// NULL gives an empty text.
QString formatted(const QVariant &value, const Format &format);

} // namespace report
