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
        data::Connection connection;
        connection.setConnectionString(data::nativeConnectionString(address));
        const QString error = test::errorOf([&connection] { connection.open(); });
        QVERIFY(error != u"no error"_s);
        QVERIFY(!error.contains(u"Segreta1"_s));
        QCOMPARE(host::openProblem(address), u"Il server \"127.0.0.1\" ha rifiutato il nome utente o la password."_s);
    }

private:
    QStringList units() const { return test::linesOf(*connection_, u"SELECT UM FROM UM ORDER BY IDUM"_s); }
    std::unique_ptr<data::Connection> connection_;
};

static const test::Registered<TestServer> registered;

#include "test_server.moc"
