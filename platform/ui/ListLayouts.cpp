#include "platform/ui/ListLayouts.h"

#include "platform/ui/UserSettings.h"

using namespace Qt::StringLiterals;

namespace ui {

namespace {

// Beside the widths, in a group of their own: no column has such a name.
const QString orderKey = u"colonne/ordine"_s;
const QString sortedByKey = u"righe/ordinate"_s;
const QString downwardsKey = u"righe/decrescenti"_s;

const QString kind = u"elenchi"_s;

} // namespace

ListLayout keptLayout(const QString &list)
{
    constexpr int least = 10;
    constexpr int most = 4000;
    ListLayout layout;
    const QVariantMap kept = remembered(kind, list);
    for (auto value = kept.begin(); value != kept.end(); ++value) {
        if (const int width = value->toInt(); !value.key().contains(u'/') && width >= least && width <= most)
            layout.widths.insert(value.key(), width);
    }
    layout.order = kept.value(orderKey).toStringList();
    layout.sortedBy = kept.value(sortedByKey).toString();
    layout.sortOrder = kept.value(downwardsKey).toBool() ? Qt::DescendingOrder : Qt::AscendingOrder;
    return layout;
}

void keepLayout(const QString &list, const ListLayout &layout)
{
    QVariantMap values;
    for (auto width = layout.widths.begin(); width != layout.widths.end(); ++width)
        values.insert(width.key(), QString::number(*width));
    if (!layout.order.isEmpty())
        values.insert(orderKey, layout.order);
    if (!layout.sortedBy.isEmpty()) {
        values.insert(sortedByKey, layout.sortedBy);
        values.insert(downwardsKey, layout.sortOrder == Qt::DescendingOrder ? u"true"_s : u"false"_s);
    }
    remember(kind, list, values);
}

} // namespace ui
