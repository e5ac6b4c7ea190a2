#include "host/DesktopScheme.h"

#include "platform/ui/Icons.h"
#include "platform/ui/Look.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString portal = u"org.freedesktop.portal.Desktop"_s;
const QString path = u"/org/freedesktop/portal/desktop"_s;
const QString settings = u"org.freedesktop.portal.Settings"_s;
const QString appearance = u"org.freedesktop.appearance"_s;
const QString colourScheme = u"color-scheme"_s;
constexpr uint preferDark = 1;
constexpr int startPatience = 150; // milliseconds that the first window may come later

QDBusMessage question()
{
    QDBusMessage message = QDBusMessage::createMethodCall(portal, path, settings, u"Read"_s);
    message.setArguments({appearance, colourScheme});
    return message;
}

// Portals put the value into one variant or into two.
QVariant bare(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

bool hasMessageBus()
{
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus"_s);
}

DesktopScheme::DesktopScheme(const QDBusConnection &bus, int patience, QObject *parent)
    : QObject(parent)
{
    QDBusConnection own(bus);
    // Before the first message Qt does not know the slot's type by its name, and would not connect it.
    qRegisterMetaType<QDBusVariant>();
    own.connect(portal, path, settings, u"SettingChanged"_s, this, SLOT(heard(QString, QString, QDBusVariant)));
    const QDBusMessage answer = own.call(question(), QDBus::Block, patience);
    if (answer.type() == QDBusMessage::ReplyMessage) {
        dark_ = bare(answer.arguments().value(0)).toUInt() == preferDark;
        return;
    }
    if (QDBusError(answer).type() != QDBusError::NoReply)
        return;
    // It is being started perhaps.
    auto *late = new QDBusPendingCallWatcher(own.asyncCall(question()), this);
    connect(late, &QDBusPendingCallWatcher::finished, this, [this, late] {
        if (!late->isError())
            take(late->reply().arguments().value(0));
        late->deleteLater();
    });
}

void DesktopScheme::heard(const QString &group, const QString &name, const QDBusVariant &value)
{
    if (group == appearance && name == colourScheme)
        take(value.variant());
}

void DesktopScheme::take(const QVariant &told)
{
    const bool dark = bare(told).toUInt() == preferDark;
    if (std::exchange(dark_, dark) != dark)
        Q_EMIT changed(dark);
}

void followDesktopScheme(QObject *owner)
{
    if (ui::Look::hasDesktopColours() || !hasMessageBus())
        return;
    const auto *scheme = new DesktopScheme(QDBusConnection::sessionBus(), startPatience, owner);
    if (scheme->isDark())
        ui::Look::useOwnColours(ui::Scheme::Dark);
    QObject::connect(scheme, &DesktopScheme::changed, owner, [](bool dark) {
        ui::Look::useOwnColours(dark ? ui::Scheme::Dark : ui::Scheme::Light);
        ui::useIconTheme();
    });
}

} // namespace host
