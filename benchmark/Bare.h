#pragma once
#include "platform/data/ConnectionString.h"

#include <QSqlDatabase>
#include <QSqlQuery>

/// The database without the program: a second attachment, driven through the driver alone.
namespace bench {

class Bare
{
public:
    explicit Bare(const data::DatabaseAddress &address);
    ~Bare();
    Bare(const Bare &) = delete;
    Bare &operator=(const Bare &) = delete;

    /// Fetches all rows and drops them; how many there were. Throws core::Error.
    qint64 fetch(const QString &sql) const;
    /// Calls `row` for each row.
    void fetch(const QString &sql, const std::function<void(const QSqlQuery &)> &row) const;
    void begin();
    void commit();
    QSqlQuery prepared(const QString &sql) const;
    /// Runs a prepared statement with positional values.
    static void run(QSqlQuery &query, const QVariantList &values);
    /// The same for a statement that gives one value.

private:
    QSqlDatabase database_;
};

} // namespace bench
