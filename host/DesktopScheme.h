#pragma once
#include <QDBusVariant>
#include <QObject>

class QDBusConnection;

namespace host {

/// Is there a message bus of this desktop session? Without one nothing is asked: the libraries would start their own.
bool hasMessageBus();

/// Whether the desktop wants dark windows, as its portal tells programs of every kind, also those that know nothing of
/// its own settings.
class DesktopScheme : public QObject
{
    Q_OBJECT

public:
    /// Asks the portal on `bus` and waits at most `patience` milliseconds; a later answer comes as changed(). Where
    /// there is no portal the answer is no.
    DesktopScheme(const QDBusConnection &bus, int patience, QObject *parent = nullptr);
    /// What the portal has told last.
    bool isDark() const { return dark_; }

Q_SIGNALS:
    /// The user has chosen the other one.
    void changed(bool dark);

private Q_SLOTS:
    void heard(const QString &group, const QString &name, const QDBusVariant &value);

private:
    void take(const QVariant &told);

    bool dark_ = false;
};

/// Where Qt does not know the desktop's colours, the program's own ones follow its choice of light or dark from now on.
/// After ui::Look::use().
void followDesktopScheme(QObject *owner);

} // namespace host
