#include "platform/ui/UserSettings.h"

#include "platform/core/Settings.h"

#include <QSettings>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

struct Place
{
    QString file;
    QString user;
};

Place place;

QString groupOf(const QString &kind, const QString &name)
{
    return core::userGroup(kind, place.user) + u'/' + name;
}

} // namespace

void rememberFor(const QString &settingsFile, const QString &user)
{
    place = {settingsFile, user};
}

QVariantMap remembered(const QString &kind, const QString &name)
{
    QVariantMap values;
    if (place.file.isEmpty())
        return values;
    QSettings settings(place.file, QSettings::IniFormat);
    settings.beginGroup(groupOf(kind, name));
    for (const QString &key : settings.allKeys())
        values.insert(key, settings.value(key));
    return values;
}

void remember(const QString &kind, const QString &name, const QVariantMap &values)
{
    if (place.file.isEmpty())
        return;
    core::changeSettings(place.file, [&](QSettings &settings) {
        settings.remove(groupOf(kind, name));
        settings.beginGroup(groupOf(kind, name));
        for (auto value = values.begin(); value != values.end(); ++value)
            settings.setValue(value.key(), *value);
        settings.endGroup();
    });
}

} // namespace ui
