#include "platform/report/Expression.h"

#include "platform/core/Decimal.h"
#include "platform/core/Error.h"
#include "platform/core/Format.h"
#include "platform/core/Translation.h"
#include "platform/report/ExpressionNode.h"

#include <functional>

using namespace Qt::StringLiterals;

namespace report {

namespace {

using Node = ExpressionNode;

bool isNumber(const QVariant &value)
{
    switch (value.metaType().id()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Bool:
        return true;
    default:
        return false;
    }
}

QString plain(const QVariant &value)
{
    return formatted(value, {});
}

QVariant column(const Node &node, const Scope &scope)
{
    const bool own = node.connection.isEmpty() || node.connection == scope.connection;
    const data::Rows &rows = scope.data->rows(own ? scope.connection : node.connection);
    const int index = rows.indexOf(node.name);
    if (index < 0)
        throw core::Error(
            core::tr("il campo \"%1\" non esiste in \"%2\"").arg(node.name, own ? scope.connection : node.connection));
    // A connection of another band stands on its first row.
    const qsizetype row = own ? scope.row : 0;
    return row < rows.size() ? rows.values(row)[index] : QVariant();
}

QVariant compare(const QString &symbol, const QVariant &left, const QVariant &right)
{
    if (isNumber(left) != isNumber(right) && (!left.isValid() || !right.isValid()))
        return symbol == u"<>"_s; // NULL is neither equal to a number nor before or behind it
    const int order = isNumber(left) && isNumber(right) ? (left.toDouble() < right.toDouble()   ? -1
                                                           : left.toDouble() > right.toDouble() ? 1
                                                                                                : 0)
                                                        : plain(left).compare(plain(right));
    static const QHash<QString, std::function<bool(int)>> tests = {
        {u"="_s, [](int o) { return o == 0; }}, {u"<>"_s, [](int o) { return o != 0; }},
        {u"<"_s, [](int o) { return o < 0; }},  {u"<="_s, [](int o) { return o <= 0; }},
        {u">"_s, [](int o) { return o > 0; }},  {u">="_s, [](int o) { return o >= 0; }}};
    return tests[symbol](order);
}

QVariant arithmetic(const QString &symbol, double left, double right)
{
    if (symbol == u"+"_s)
        return left + right;
    if (symbol == u"-"_s)
        return left - right;
    if (symbol == u"*"_s)
        return left * right;
    return right == 0 ? QVariant() : QVariant(left / right);
}

QVariant applyOperator(const Node &node, const Scope &scope)
{
    const QVariant left = evaluate(node.arguments[0], scope);
    if (node.name == u"not"_s)
        return !isTrue(left);
    if (node.arguments.size() == 1)
        return -left.toDouble();
    if (node.name == u"and"_s)
        return isTrue(left) && isTrue(evaluate(node.arguments[1], scope));
    if (node.name == u"or"_s)
        return isTrue(left) || isTrue(evaluate(node.arguments[1], scope));
    const QVariant right = evaluate(node.arguments[1], scope);
    if (node.name == u"||"_s)
        return QVariant(plain(left) + plain(right));
    static const QString arithmeticSymbols = u"+-*/"_s;
    if (arithmeticSymbols.contains(node.name))
        return arithmetic(node.name, left.toDouble(), right.toDouble());
    return compare(node.name, left, right);
}

QVariant joined(const QVariantList &arguments)
{
    QStringList parts;
    for (const QVariant &argument : arguments.mid(1)) {
        if (const QString part = plain(argument); !part.trimmed().isEmpty())
            parts.append(part);
    }
    return parts.join(arguments[0].toString());
}

struct Function
{
    int fewest;
    int most;
    std::function<QVariant(const Node &, const Scope &, const QVariantList &)> run;
};

// "if" evaluates what it needs itself; the others get the values of their arguments.
const QHash<QString, Function> &functions()
{
    using Arguments = const QVariantList &;
    static const QHash<QString, Function> all = {
        {u"if"_s, {3, 3, {}}},
        {u"sum"_s, {2, 2, {}}},
        {u"sumBefore"_s, {1, 1, {}}},
        {u"sumThrough"_s, {1, 1, {}}},
        {u"count"_s,
         {1, 1,
          [](const Node &node, const Scope &scope, Arguments) {
              return QVariant(scope.data->rows(node.connection).size());
          }}},
        {u"empty"_s,
         {1, 1, [](const Node &, const Scope &, Arguments a) { return QVariant(plain(a[0]).trimmed().isEmpty()); }}},
        {u"round"_s,
         {2, 2,
          [](const Node &, const Scope &, Arguments a) {
              return QVariant(core::roundDecimal(a[0].toDouble(), a[1].toInt()));
          }}},
        {u"join"_s, {2, 99, [](const Node &, const Scope &, Arguments a) { return joined(a); }}},
        {u"text"_s,
         {2, 3,
          [](const Node &, const Scope &, Arguments a) {
              return QVariant(formatted(a[0], {formatKind(a[1].toString()), a.size() > 2 ? a[2].toInt() : 2}));
          }}},
    };
    return all;
}

QVariant call(const Node &node, const Scope &scope)
{
    if (node.name == u"if"_s)
        return evaluate(node.arguments[isTrue(evaluate(node.arguments[0], scope)) ? 1 : 2], scope);
    if (node.name == u"sum"_s)
        return scope.data->sum(node.connection, node.arguments[0], scope.data->rows(node.connection).size());
    if (node.name == u"sumBefore"_s)
        return scope.data->sum(scope.detail, node.arguments[0], scope.rowsBefore);
    if (node.name == u"sumThrough"_s)
        return scope.data->sum(scope.detail, node.arguments[0], scope.rowsThrough);
    QVariantList arguments;
    for (const Node &argument : node.arguments)
        arguments.append(evaluate(argument, scope));
    return functions()[node.name].run(node, scope, arguments);
}

QString withoutTrailingZeros(QString number)
{
    if (!number.contains(u','))
        return number;
    while (number.endsWith(u'0'))
        number.chop(1);
    if (number.endsWith(u','))
        number.chop(1);
    return number;
}

} // namespace

const data::Rows &RunData::rows(const QString &connection) const
{
    const auto found = connections.constFind(connection);
    if (found == connections.constEnd())
        throw core::Error(core::tr("la connessione dati \"%1\" non esiste").arg(connection));
    return *found;
}

double RunData::sum(const QString &connection, const ExpressionNode &term, qsizetype count) const
{
    std::vector<double> &partial = sums_[&term];
    if (partial.empty()) {
        Scope scope{.data = this, .connection = connection};
        partial.push_back(0);
        for (; scope.row < rows(connection).size(); ++scope.row)
            partial.push_back(partial.back() + report::evaluate(term, scope).toDouble());
    }
    return partial.at(static_cast<size_t>(count));
}

bool isTrue(const QVariant &value)
{
    return isNumber(value) ? value.toDouble() != 0 : !plain(value).isEmpty();
}

std::pair<int, int> functionArity(const QString &name)
{
    const auto found = functions().constFind(name);
    return found == functions().constEnd() ? std::pair(0, 0) : std::pair(found->fewest, found->most);
}

QVariant evaluate(const ExpressionNode &node, const Scope &scope)
{
    switch (node.kind) {
    case Node::Kind::Literal:
        return node.value;
    case Node::Kind::Column:
        return column(node, scope);
    case Node::Kind::Parameter:
        return scope.data->parameters.value(node.name);
    case Node::Kind::Page:
        return scope.page;
    case Node::Kind::Pages:
        return scope.pages;
    case Node::Kind::Row:
        return scope.row + 1;
    case Node::Kind::Copy:
        return scope.copy;
    case Node::Kind::Now:
        return scope.data->now;
    case Node::Kind::Operator:
        return applyOperator(node, scope);
    case Node::Kind::Call:
        return call(node, scope);
    }
    return {};
}

Format::Kind formatKind(const QString &name)
{
    using Kind = Format::Kind;
    static const QHash<QString, Kind> kinds = {{u"plain"_s, Kind::Plain},     {u"currency"_s, Kind::Currency},
                                               {u"number"_s, Kind::Number},   {u"decimal"_s, Kind::Decimal},
                                               {u"integer"_s, Kind::Integer}, {u"date"_s, Kind::Date},
                                               {u"time"_s, Kind::Time},       {u"datetime"_s, Kind::DateTime}};
    const auto found = kinds.constFind(name);
    if (found == kinds.constEnd())
        throw core::Error(core::tr("il formato \"%1\" non esiste").arg(name));
    return *found;
}

QString formatted(const QVariant &value, const Format &format)
{
    using Kind = Format::Kind;
    if (value.isNull())
        return {};
    switch (format.kind) {
    case Kind::Currency:
        return core::formatCurrency(value.toDouble(), format.places);
    case Kind::Number:
        return core::formatNumber(value.toDouble(), format.places);
    case Kind::Decimal:
        return withoutTrailingZeros(core::formatNumber(value.toDouble(), format.places));
    case Kind::Integer:
        return core::formatNumber(value.toDouble(), 0);
    case Kind::Date:
        return core::formatDate(value.toDate());
    case Kind::Time:
        return value.toTime().toString(u"HH:mm"_s);
    case Kind::DateTime:
        return core::formatDate(value.toDate()) + value.toTime().toString(u" HH:mm"_s);
    case Kind::Plain:
        break;
    }
    switch (value.metaType().id()) {
    case QMetaType::QDate:
        return core::formatDate(value.toDate());
    case QMetaType::QTime:
        return value.toTime().toString(u"HH:mm"_s);
    case QMetaType::QDateTime:
        return formatted(value, {Kind::DateTime});
    case QMetaType::Double:
        // Grouping would make "2.026" of a year.
        return withoutTrailingZeros(core::plainNumber(value.toDouble(), 6));
    default:
        return value.toString();
    }
}

} // namespace report
