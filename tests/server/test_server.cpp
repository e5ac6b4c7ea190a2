#include "host/start/StartTurn.h"
#include "platform/data/WaitLimits.h"
#include "tests/server/AtServer.h"

class TestServer : public AtServer
{
    Q_OBJECT

private Q_SLOTS:
    void init() override
    {
        connection_ = connect();
        connection_->execute(u"DELETE FROM UM"_s);
    }
    void cleanup() override { connection_.reset(); }

    void lossInATransactionIsAnErrorUntilItEnds()
    {
        const QString insert = u"INSERT INTO UM(UM) VALUES(?)"_s;
        connection_->run(insert, {u"PRIMA"_s});
        {
            data::Transaction transaction(*connection_);
            connection_->run(insert, {u"PERSA"_s});
            server().crash();
            QVERIFY_EXCEPTION_THROWN(connection_->run(insert, {u"PERSA"_s}), data::DatabaseError);
            server().start();
            // Half of a transaction must not be written by a new connection.
            QVERIFY_EXCEPTION_THROWN(connection_->run(insert, {u"PERSA"_s}), data::DatabaseError);
            QVERIFY_EXCEPTION_THROWN(transaction.commit(), data::DatabaseError);
        }
        connection_->run(insert, {u"DOPO"_s});
        QCOMPARE(units(), QStringList({u"PRIMA"_s, u"DOPO"_s}));
    }

    void lossBetweenTransactionsCostsOneStatement()
    {
        connection_->execute(u"INSERT INTO UM(UM) VALUES('PRIMA')"_s);
        server().crash();
        QVERIFY_EXCEPTION_THROWN(units(), data::DatabaseError);
        QVERIFY_EXCEPTION_THROWN(units(), data::DatabaseError); // still down
        QCOMPARE(data::checkDatabase(server().address()).failure, data::OpenFailure::Unreachable);
        server().start();
        QCOMPARE(units(), QStringList(u"PRIMA"_s));
    }

    void refusedPasswordIsNotInTheError()
    {
        data::DatabaseAddress address = server().address();
        address.password = u"Segreta1"_s;
        const QString error = test::errorOf([&address] { test::connectTo(address); });
        QVERIFY2(error != u"no error"_s && !error.contains(u"Segreta1"_s), qPrintable(error));
        QCOMPARE(host::openProblem(address), u"Il server \"127.0.0.1\" ha rifiutato il nome utente o la password."_s);
    }

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
        data::waitLimits() = {};
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

private:
    QStringList units() const { return test::linesOf(*connection_, u"SELECT UM FROM UM ORDER BY IDUM"_s); }
    std::unique_ptr<data::Connection> connection_;
};

static const test::Registered<TestServer> registered;

#include "test_server.moc"
