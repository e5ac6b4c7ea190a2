#pragma once
#include "platform/data/Driver.h"

#include <QSqlDatabase>

namespace data {

/// A data source of ODBC, through Qt's driver.
class OdbcDriver : public Driver
{
public:
    /// Throws DatabaseError.
    explicit OdbcDriver(const DriverSettings &settings);
    ~OdbcDriver() override;

    void begin() override;
    void commit() override;
    void rollback() override;
    std::unique_ptr<Statement> prepare(const QString &sql, View view) override;
    void executeOnce(const QString &sql) override;

private:
    QString name_;
    QSqlDatabase database_;
};

} // namespace data
