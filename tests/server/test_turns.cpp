#include "host/PackageLoader.h"
#include "host/users/PasswordDialogs.h"
#include "tests/server/AtServer.h"
#include "tests/support/SlowLink.h"

/// How often the program waits for a server: on a slow network nothing else decides how long it takes.
class TestTurns : public AtServer
{
    Q_OBJECT

private Q_SLOTS:
    void init() override
    {
        link_ = std::make_unique<test::SlowLink>(server().address().port);
        setPlace(std::make_unique<test::Workplace>(address()));
        host::insertDemoModuleData(database());
    }
    void cleanup() override
    {
        AtServer::cleanup();
        link_.reset();
    }

    void document_data() { test::eachKind(); }
    void document()
    {
        const test::Document document(place(), test::kindOfRow());
        // A turn for each row would be ten more.
        constexpr int most = 25;
        constexpr int restOfFingers = 500; // milliseconds
        // The first save prepares the statements.
        for (int time = 0; time < 2; ++time) {
            document.trigger(u"actNuovo"_s);
            document.fillHeader();
            for (int row = 0; row < 10; ++row)
                document.addArticle(u"TRA-0018"_s, u"2"_s, u"10"_s);
            const int turns = turnsOf([&] { document.save(); });
            QCOMPARE(document.flags(), u"stored"_s);
            QVERIFY2(time == 0 || turns <= most, qPrintable(QString::number(turns)));
            // A chooser reads its list once, when the fingers rest after it got the focus: not in a counted save.
            QTest::qWait(time == 0 ? restOfFingers : 0);
        }
        document.saveAgain();
        document.form().DataChanged();
        const int again = turnsOf([&] { document.save(); });
        QVERIFY2(again <= most, qPrintable(QString::number(again)));
        // With whether it was printed, and with whatever is asked for once it is shown. The first opening prepares.
        document.form().ApriRecord(document.form().IdRecord());
        const int opening = turnsOf([&] {
            document.form().ApriRecord(document.form().IdRecord());
            test::settle();
        });
        QVERIFY2(opening <= 8, qPrintable(QString::number(opening)));
        GetUM(1);
        QCOMPARE(turnsOf([] { GetUM(2); }), 1);
    }

    void loginAndStart()
    {
        setPlace({});
        test::ScriptedDialogs dialogs;
        dialogs.expect([](QDialog &dialog) { test::press(&dialog, u"cmdOk"_s); });
        std::unique_ptr<host::Session> session;
        const int login = turnsOf([&] {
            auto connection = test::connectTo(address());
            const QString user = host::logIn(nullptr, host::administrator, *connection).user;
            session = std::make_unique<host::Session>(address(), user, QString(), std::move(connection));
        });
        const int start = turnsOf([] { host::startPackages(qApp); });
        const int readings = turnsOf([] { schema::runModuleSteps(ModuleConnection(), schema::moduleSteps()); });
        QVERIFY2(login <= 12 && readings <= 24 && start - readings <= 60,
                 qPrintable(u"%1, %2, %3"_s.arg(login).arg(start).arg(readings)));
        qInfo("%d turns for the login, %d for the start, %d more for reading versions", login, start - readings,
              readings);
    }

private:
    data::DatabaseAddress address() const
    {
        data::DatabaseAddress address = server().address();
        address.port = link_->port();
        return address;
    }

    int turnsOf(const std::function<void()> &work) const
    {
        const int before = link_->turns();
        work();
        return link_->turns() - before;
    }

    std::unique_ptr<test::SlowLink> link_;
};

static const test::Registered<TestTurns> registered;

#include "test_turns.moc"
