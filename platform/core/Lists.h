#pragma once
#include <QList>

#include <functional>
#include <iterator>

/// Lists that are made from others in one expression.
namespace core {

/// What `function`, a callable or a member, gives for each element of `range`, in its order.
template <typename Range, typename Function>
auto mapped(const Range &range, Function &&function)
{
    QList<std::decay_t<std::invoke_result_t<Function &, decltype(*std::begin(range))>>> results;
    results.reserve(std::ssize(range));
    for (const auto &element : range)
        results.append(std::invoke(function, element));
    return results;
}

/// The elements of `list` for which `condition`, a callable or a member, holds, in its order.
template <typename Element, typename Condition>
QList<Element> filtered(QList<Element> list, Condition &&condition)
{
    list.removeIf([&condition](const Element &element) { return !std::invoke(condition, element); });
    return list;
}

} // namespace core
