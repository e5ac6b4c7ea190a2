#include "host/Corvane3Impl.h"
#include "host/DatabaseSetup.h"
#include "platform/core/Error.h"
#include "platform/data/Connection.h"
#include "platform/data/DataSet.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/DatabaseFile.h"
#include "tests/support/FirebirdServer.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;

class TestServer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup() { connection_.reset(); }

    void twoWorkstationsGetDifferentKeys();
    void lossInATransactionIsAnErrorUntilItEnds();
    void lossBetweenTransactionsCostsOneStatement();
    void refusedPasswordIsNotInTheError();

private:
    std::unique_ptr<data::Connection> connect() const;
    QStringList units() const;

    const QTemporaryDir lockFolder_;
    std::unique_ptr<test::FirebirdServer> server_;
    std::unique_ptr<data::Connection> connection_;
};

void TestServer::initTestCase()
{
    data::useLockFolder(lockFolder_.path());
    server_ = std::make_unique<test::FirebirdServer>();
    host::createHostDatabase(server_->address(), false);
}

void TestServer::init()
{
    connection_ = connect();
    connection_->execute(u"DELETE FROM UM"_s);
}

std::unique_ptr<data::Connection> TestServer::connect() const
{
    auto connection = std::make_unique<data::Connection>();
    connection->setConnectionString(data::nativeConnectionString(server_->address()));
    connection->open();
    return connection;
}

QStringList TestServer::units() const
{
    QStringList texts;
    const data::Rows rows = connection_->select(u"SELECT UM FROM UM ORDER BY IDUM"_s);
    for (qsizetype row = 0; row < rows.size(); ++row)
        texts.append(rows.text(row, u"UM"));
    return texts;
}

void TestServer::twoWorkstationsGetDifferentKeys()
{
    const std::unique_ptr<data::Connection> other = connect();
    const int predicted = GetLastGeneratorValue(u"GN_IDUM"_s, *connection_) + 1;
    other->execute(u"INSERT INTO UM(UM) VALUES('ALTRO')"_s);
    data::DataSet set(connection_.get());
    set.setCommandText(u"SELECT * FROM UM WHERE IDUM = -1"_s);
    set.setUpdateTarget({u"UM"_s, u"IDUM"_s});
    set.open();
    set.append();
    set.setValue(u"IDUM"_s, predicted);
    set.setValue(u"UM"_s, u"MIO"_s);
    set.updateBatch();
    QCOMPARE(set.integer(u"IDUM"_s), predicted + 1);
    QCOMPARE(units(), QStringList({u"ALTRO"_s, u"MIO"_s}));
}

void TestServer::lossInATransactionIsAnErrorUntilItEnds()
{
    const QString insert = u"INSERT INTO UM(UM) VALUES(?)"_s;
    connection_->run(insert, {u"PRIMA"_s});
    {
        data::Transaction transaction(*connection_);
        connection_->run(insert, {u"PERSA"_s});
        server_->crash();
        QVERIFY_EXCEPTION_THROWN(connection_->run(insert, {u"PERSA"_s}), data::DatabaseError);
        server_->start();
        // Half of a transaction must not be written by a new connection.
        QVERIFY_EXCEPTION_THROWN(connection_->run(insert, {u"PERSA"_s}), data::DatabaseError);
        QVERIFY_EXCEPTION_THROWN(transaction.commit(), data::DatabaseError);
    }
    connection_->run(insert, {u"DOPO"_s});
    QCOMPARE(units(), QStringList({u"PRIMA"_s, u"DOPO"_s}));
}

void TestServer::lossBetweenTransactionsCostsOneStatement()
{
    connection_->execute(u"INSERT INTO UM(UM) VALUES('PRIMA')"_s);
    server_->crash();
    QVERIFY_EXCEPTION_THROWN(units(), data::DatabaseError);
    QVERIFY_EXCEPTION_THROWN(units(), data::DatabaseError); // still down
    QCOMPARE(data::checkDatabase(server_->address()).failure, data::OpenFailure::Unreachable);
    server_->start();
    QCOMPARE(units(), QStringList({u"PRIMA"_s}));
}

void TestServer::refusedPasswordIsNotInTheError()
{
    data::DatabaseAddress address = server_->address();
    address.password = u"Segreta1"_s;
    data::Connection connection;
    connection.setConnectionString(data::nativeConnectionString(address));
    const QString error = test::errorOf([&connection] { connection.open(); });
    QVERIFY(error != u"no error"_s);
    QVERIFY(!error.contains(u"Segreta1"_s));
    QCOMPARE(host::openProblem(address), u"Il server \"127.0.0.1\" ha rifiutato il nome utente o la password."_s);
}

static const test::Registered<TestServer> registered;

int main(int argc, char **argv)
{
    return test::runAll(argc, argv);
}

#include "test_server.moc"
