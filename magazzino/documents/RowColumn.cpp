#include "magazzino/documents/RowColumn.h"

namespace {

template <typename... Handlers>
struct Overloaded : Handlers...
{
    using Handlers::operator()...;
};

} // namespace

QVariant storedValue(const RowColumn &column, const DocumentRow &row)
{
    return std::visit(Overloaded{[](double fixed) { return QVariant(fixed); },
                                 [&row](QString DocumentRow::*text) { return QVariant(row.*text); },
                                 [&row](auto member) { return (row.*member) ? QVariant(*(row.*member)) : QVariant(); }},
                      column.member);
}

void readValue(const RowColumn &column, const QVariant &value, DocumentRow &row)
{
    std::visit(Overloaded{[](double) {}, [&](QString DocumentRow::*text) { row.*text = value.toString(); },
                          [&]<typename Value>(std::optional<Value> DocumentRow::*member) {
                              row.*member = value.isValid() ? std::optional(value.value<Value>()) : std::nullopt;
                          }},
               column.member);
}

QString textOf(const RowColumn &column, const DocumentRow &row)
{
    return std::visit(
        Overloaded{[&row](QString DocumentRow::*text) { return row.*text; },
                   [&row](std::optional<QString> DocumentRow::*text) { return (row.*text).value_or(QString()); },
                   [](auto) { return QString(); }},
        column.member);
}

std::optional<double> DocumentRow::*numberOf(const RowColumn &column)
{
    const auto *number = std::get_if<std::optional<double> DocumentRow::*>(&column.member);
    return number ? *number : nullptr;
}
