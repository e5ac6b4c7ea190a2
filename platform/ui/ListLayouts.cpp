#include "platform/ui/ListLayouts.h"

#include "platform/core/Settings.h"

#include <QSettings>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

// Beside the widths, in a group of their own: no column has such a name.
const QString orderKey = u"colonne/ordine"_s;
const QString sortedByKey = u"righe/ordinate"_s;
const QString downwardsKey = u"righe/decrescenti"_s;

struct Place
{
    QString file;
    QString user;
};

Place &place()
{
    static Place current;
    return current;
}

QString groupOf(const QString &list)
{
    return core::userGroup(u"elenchi"_s, place().user) + u'/' + list;
}

} // namespace

void keepListLayouts(const QString &settingsFile, const QString &user)
{
    place() = {settingsFile, user};
}

ListLayout keptLayout(const QString &list)
{
    constexpr int least = 10;
    constexpr int most = 4000;
    if (place().file.isEmpty())
        return {};
    QSettings settings(place().file, QSettings::IniFormat);
    settings.beginGroup(groupOf(list));
    ListLayout layout;
    const QStringList fields = settings.childKeys();
    for (const QString &field : fields) {
        if (const int width = settings.value(field).toInt(); width >= least && width <= most)
            layout.widths.insert(field, width);
    }
    layout.order = settings.value(orderKey).toStringList();
    layout.sortedBy = settings.value(sortedByKey).toString();
    layout.sortOrder = settings.value(downwardsKey).toBool() ? Qt::DescendingOrder : Qt::AscendingOrder;
    return layout;
}

void keepLayout(const QString &list, const ListLayout &layout)
{
    if (place().file.isEmpty())
        return;
    core::changeSettings(place().file, [&](QSettings &settings) {
        settings.remove(groupOf(list));
        settings.beginGroup(groupOf(list));
        for (auto width = layout.widths.begin(); width != layout.widths.end(); ++width)
            settings.setValue(width.key(), QString::number(*width));
        if (!layout.order.isEmpty())
            settings.setValue(orderKey, layout.order);
        if (!layout.sortedBy.isEmpty()) {
            settings.setValue(sortedByKey, layout.sortedBy);
            settings.setValue(downwardsKey, layout.sortOrder == Qt::DescendingOrder ? u"true"_s : u"false"_s);
        }
        settings.endGroup();
    });
}

} // namespace ui
