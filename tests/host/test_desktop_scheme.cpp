#include "host/DesktopScheme.h"
#include "tests/support/Kit.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <csignal>
#include <sys/prctl.h>

namespace {

const QString path = u"/org/freedesktop/portal/desktop"_s;

/// What a desktop's portal says of light and dark.
class Portal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit Portal(uint scheme)
        : scheme_(scheme)
    {
    }

    /// As the user chooses it in the desktop's settings.
    void choose(const QString &group, uint scheme, const QDBusConnection &bus)
    {
        if (group == u"org.freedesktop.appearance")
            scheme_ = scheme;
        QDBusMessage told = QDBusMessage::createSignal(path, u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s);
        told.setArguments({group, u"color-scheme"_s, QVariant::fromValue(QDBusVariant(scheme))});
        bus.send(told);
    }

public Q_SLOTS:
    // As portals do it: a variant in a variant.
    QDBusVariant Read(const QString &, const QString &)
    {
        return QDBusVariant(QVariant::fromValue(QDBusVariant(scheme_)));
    }

private:
    uint scheme_;
};

} // namespace

/// Light or dark, as a portal on a message bus of the test's own tells it.
class TestDesktopScheme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        daemon_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        daemon_.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s});
        QVERIFY(daemon_.waitForReadyRead());
        address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
    }
    void cleanupTestCase()
    {
        daemon_.terminate();
        daemon_.waitForFinished();
    }

    // The first window already has the right colours when the portal answers in time, and open ones follow.
    void portalIsFollowed_data()
    {
        test::table<uint, bool, bool, bool>({{"dark", 1U, true, true, true},
                                             {"light", 2U, true, false, false},
                                             {"no preference", 0U, true, false, false},
                                             {"dark, told late", 1U, false, false, true},
                                             {"light, told late", 2U, false, false, false}});
    }
    void portalIsFollowed()
    {
        const auto [told, inTime, first, later] = test::row<uint, bool, bool, bool>();
        auto portal = std::make_unique<Portal>(told);
        QThread desktop;
        QDBusConnection theirs = QDBusConnection::connectToBus(address_, u"portal"_s);
        QVERIFY(theirs.registerService(u"org.freedesktop.portal.Desktop"_s));
        theirs.registerObject(path, portal.get(), QDBusConnection::ExportAllSlots);
        const auto leave = qScopeGuard([&] {
            portal.reset();
            QDBusConnection::disconnectFromBus(u"portal"_s);
            QDBusConnection::disconnectFromBus(u"program"_s);
        });
        // In this thread it cannot answer who waits for it here.
        if (inTime) {
            portal->moveToThread(&desktop);
            desktop.start();
        }
        constexpr int patience = 2000;
        host::DesktopScheme scheme(QDBusConnection::connectToBus(address_, u"program"_s), inTime ? patience : 20);
        desktop.quit();
        desktop.wait();
        QCOMPARE(scheme.isDark(), first);
        QTRY_COMPARE(scheme.isDark(), later);

        const QSignalSpy changed(&scheme, &host::DesktopScheme::changed);
        portal->choose(u"org.example"_s, later ? 2 : 1, theirs);
        portal->choose(u"org.freedesktop.appearance"_s, later ? 2 : 1, theirs);
        QTRY_COMPARE(scheme.isDark(), !later);
        QCOMPARE(changed.size(), 1);
    }

    void withoutPortalItIsLightAtOnce()
    {
        QElapsedTimer clock;
        clock.start();
        QVERIFY(!host::DesktopScheme(QDBusConnection::connectToBus(address_, u"lonely"_s), 5000).isDark());
        QVERIFY(!host::DesktopScheme(QDBusConnection(u"none"_s), 5000).isDark());
        QVERIFY(clock.elapsed() < 2000);
        QDBusConnection::disconnectFromBus(u"lonely"_s);
    }

private:
    QProcess daemon_;
    QString address_;
};

static const test::Registered<TestDesktopScheme> registered;

#include "test_desktop_scheme.moc"
