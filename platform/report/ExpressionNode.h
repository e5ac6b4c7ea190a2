#pragma once
#include "platform/report/Expression.h"

namespace report {

/// One node of a parsed expression.
struct ExpressionNode
{
    enum class Kind
    {
        Literal,
        Column,    ///< `name` of `connection`
        Parameter, ///< `name`
        Page,
        Pages,
        Row,
        Copy,
        Now,
        Operator, ///< `name` over one or two arguments
        Call      ///< function `name`
    };

    Kind kind = Kind::Literal;
    QVariant value;
    QString name;
    QString connection;
    std::vector<ExpressionNode> arguments;
    int depth = 1; ///< levels of nodes, with this one
};

/// The value of a node at `scope`; NULL is an invalid QVariant. Throws core::Error for unknown connections and columns.
QVariant evaluate(const ExpressionNode &node, const Scope &scope);
/// A number other than 0, or a text that is not empty.
bool isTrue(const QVariant &value);
/// Fewest and most arguments of a function; {0, 0} for an unknown one.
std::pair<int, int> functionArity(const QString &name);

} // namespace report
