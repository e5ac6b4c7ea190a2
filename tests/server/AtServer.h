#pragma once
#include "host/DatabaseSetup.h"
#include "host/start/FirstRows.h"
#include "platform/data/DatabaseFile.h"
#include "tests/support/FirebirdServer.h"
#include "tests/support/Fixtures.h"

/// Tests of one class that share a database server with a firm's database on it; each has a workplace there.
class AtServer : public test::AtWorkplace
{
    Q_OBJECT

protected Q_SLOTS:
    virtual void initTestCase()
    {
        data::useLockFolder(lockFolder_.path());
        server_ = std::make_unique<test::FirebirdServer>();
        host::createHostDatabase(server_->address(), true);
    }
    void init() override
    {
        setPlace(std::make_unique<test::Workplace>(server_->address()));
        host::insertDemoModuleData(place().database());
    }

protected:
    test::FirebirdServer &server() const { return *server_; }
    /// Another workstation's.
    std::unique_ptr<data::Connection> connect() const { return test::connectTo(server_->address()); }
    /// From a connection of its own.
    QStringList lines(const QString &sql) const { return test::linesOf(*connect(), sql); }

private:
    const QTemporaryDir lockFolder_;
    std::unique_ptr<test::FirebirdServer> server_;
};
