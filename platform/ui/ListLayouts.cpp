#include "platform/ui/ListLayouts.h"

#include "platform/core/Settings.h"

#include <QSettings>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

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

// A slash in a name would open a group of its own.
QString groupOf(const QString &list)
{
    const QString user = QString::fromLatin1(QUrl::toPercentEncoding(place().user));
    return u"elenchi/%1/%2"_s.arg(user, list);
}

} // namespace

void keepListLayouts(const QString &settingsFile, const QString &user)
{
    place() = {settingsFile, user};
}

QMap<QString, int> keptWidths(const QString &list)
{
    constexpr int least = 10;
    constexpr int most = 4000;
    if (place().file.isEmpty())
        return {};
    QSettings settings(place().file, QSettings::IniFormat);
    settings.beginGroup(groupOf(list));
    QMap<QString, int> widths;
    const QStringList fields = settings.childKeys();
    for (const QString &field : fields) {
        if (const int width = settings.value(field).toInt(); width >= least && width <= most)
            widths.insert(field, width);
    }
    return widths;
}

void keepWidths(const QString &list, const QMap<QString, int> &widths)
{
    if (place().file.isEmpty())
        return;
    core::changeSettings(place().file, [&](QSettings &settings) {
        settings.remove(groupOf(list));
        settings.beginGroup(groupOf(list));
        for (auto width = widths.begin(); width != widths.end(); ++width)
            settings.setValue(width.key(), QString::number(*width));
        settings.endGroup();
    });
}

} // namespace ui
