#include "host/start/StartTurn.h"
#include "platform/data/WaitLimits.h"
#include "tests/server/AtServer.h"

/// Workstations that start on one server at the same time.
class TestStarts : public AtServer
{
    Q_OBJECT

private Q_SLOTS:
    void init() override {}
    void cleanup() override { data::waitLimits() = {}; }

    // The module's tables are missing, so all of them want to make them.
    void workstationsUpgradeOneAfterTheOther()
    {
        const data::DatabaseAddress address = server().address(u"insieme.fdb"_s);
        host::createHostDatabase(address, false);
        const QTemporaryDir home;
        std::vector<std::unique_ptr<test::Program>> workstations;
        for (int i = 0; i < 3; ++i)
            workstations.push_back(std::make_unique<test::Program>(
                home.filePath(QString::number(i)), QStringList{u"--database"_s, address.toString(), u"--upgrade"_s},
                address));
        for (const auto &workstation : workstations) {
            // Whatever is told makes it fail.
            const int code = workstation->exitCode();
            QVERIFY2(code == 0, workstation->told().constData());
        }
    }

    void turnIsWaitedFor()
    {
        auto other = std::make_unique<host::StartTurn>(server().address());
        test::ScriptedDialogs dialogs;
        dialogs.expect([&other](QDialog &dialog) {
            QVERIFY(dialog.isVisible());
            other.reset();
            test::waiting()(dialog);
        });
        const host::StartTurn turn(server().address());
    }

    void turnThatDoesNotComeIsAskedAbout()
    {
        data::waitLimits().turn = 1;
        const host::StartTurn other(server().address());
        test::ScriptedDialogs dialogs;
        test::ScriptedMessages messages;
        for (const core::Answer answer : {core::Answer::Yes, core::Answer::No, core::Answer::Cancel}) {
            dialogs.expect(test::waiting());
            messages.expectPart(u"Conferma"_s, u"Aspettare ancora?"_s, answer);
        }
        const host::StartTurn withoutIt(server().address());
        const QString error = test::errorOf([this] { const host::StartTurn turn(server().address()); });
        QVERIFY2(error.contains(u"non è stato aperto"_s), qPrintable(error));
    }

    void creationThatWasCutIsReplaced()
    {
        const data::DatabaseAddress address = server().address(u"incompleto.fdb"_s);
        data::createDatabase(address);
        QVERIFY(host::isUnfinished(address));
        {
            // It is still being made, for all that anybody knows.
            const auto other = test::connectTo(address);
            const QString error = test::errorOf([&address] { host::createHostDatabase(address, false); });
            QVERIFY2(error.contains(u"un'altra postazione lo sta creando"_s), qPrintable(error));
            QVERIFY(host::isUnfinished(address));
        }
        host::createHostDatabase(address, false);
        QCOMPARE(host::databaseProblem(address), QString());
    }
};

static const test::Registered<TestStarts> registered;
#include "test_starts.moc"
