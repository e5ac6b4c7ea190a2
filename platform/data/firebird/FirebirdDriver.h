#pragma once
#include "platform/data/Driver.h"
#include "platform/data/firebird/Attachment.h"

namespace data::firebird {

/// The client library as a driver: embedded files and servers.
class FirebirdDriver : public Driver
{
public:
    /// Throws DatabaseError.
    explicit FirebirdDriver(const DatabaseAddress &address);

    void begin() override;
    void commit() override;
    void rollback() override;
    std::unique_ptr<Statement> prepare(const QString &sql) override;

private:
    Attachment attachment_;
    std::shared_ptr<NativeTransaction> transaction_;
};

} // namespace data::firebird
