#pragma once
#include "platform/data/Driver.h"
#include "platform/data/firebird/Prepared.h"

namespace data::firebird {

/// The client library as a driver: embedded files and servers. Statements stay prepared as long as the connection.
class FirebirdDriver : public Driver
{
public:
    /// Throws DatabaseError.
    explicit FirebirdDriver(const DatabaseAddress &address);

    void begin() override;
    void commit() override;
    void rollback() override;
    std::unique_ptr<Statement> prepare(const QString &sql, View view) override;
    void executeOnce(const QString &sql) override;
    void cancel() override { attachment_.cancel(); }

private:
    std::shared_ptr<NativeTransaction> transactionFor(View view);

    Attachment attachment_;
    PreparedStore store_;
    std::shared_ptr<NativeTransaction> transaction_;
    std::shared_ptr<NativeTransaction> standing_; ///< in which single rows are read; holds nothing and hinders nobody
};

} // namespace data::firebird
