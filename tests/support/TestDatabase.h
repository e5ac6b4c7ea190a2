#pragma once
#include "platform/data/Connection.h"
#include "platform/data/ConnectionString.h"

#include <QVariantMap>

#include <memory>

namespace test {

/// What a test's database holds at the start.
enum class Content
{
    Empty,
    HostSchema,
    ModuleSchema, ///< host and module tables, as after the module's first start
    DemoData      ///< the same with the demonstration data
};

/// A database file of the test's own, copied from a template that is made once per program; removed with the object.
/// With the environment variable MAGAZZINO_TEST_SERVER it lies on a server that the program starts for itself.
class TestDatabase
{
public:
    explicit TestDatabase(Content content = Content::ModuleSchema);
    ~TestDatabase();
    Q_DISABLE_COPY(TestDatabase)

    data::DatabaseAddress address() const;
    QString connectionString() const { return data::nativeConnectionString(address()); }

private:
    QString path_;
};

/// A database with a live module object over it: a plain QObject in the registry, with the open connection
/// "ModADOConn" that the data services look for. One at a time.
class ModuleDatabase
{
public:
    explicit ModuleDatabase(Content content = Content::ModuleSchema);
    ~ModuleDatabase();

    data::Connection &connection() { return *connection_; }
    const TestDatabase &database() const { return database_; }

    /// See linesOf().
    QStringList lines(const QString &sql);
    /// See insertInto().
    ///@{
    int insert(const QString &table, const QVariantMap &values = {});
    int insert(const QString &table, const QString &values);
    ///@}

private:
    TestDatabase database_;
    std::unique_ptr<QObject> module_;
    data::Connection *connection_ = nullptr;
};

/// The embedded database in a file.
data::DatabaseAddress fileAddress(const QString &path);
/// An open connection of its own, as another program or workstation has it. Throws core::Error.
std::unique_ptr<data::Connection> connectTo(const data::DatabaseAddress &address);

/// "COLUMN=value|COLUMN=value" as values of a row.
QVariantMap fields(const QString &text);

/// Inserts a row, of which `values` may be a text as fields() takes it; columns that are required but not named get 0,
/// "-" or 2026-01-01. Returns the value of its first column, the key.
///@{
int insertInto(data::Connection &connection, const QString &table, const QVariantMap &values = {});
int insertInto(data::Connection &connection, const QString &table, const QString &values);
///@}

/// Each row of a query, or of several, as one text, its values separated by "|"; NULL is empty.
///@{
QStringList linesOf(data::Connection &connection, const QString &sql);
QStringList linesOf(data::Connection &connection, const QStringList &queries);
QStringList linesOf(const data::DatabaseAddress &address, const QString &sql);
///@}

/// The columns of a query with their decimals, then its rows; NULL and 0 told apart.
QStringList answersOf(data::Connection &connection, const QString &sql);

/// Does `work` while the connection refuses the statements that `refused` picks, with the error "rifiutato".
void refusing(data::Connection &connection, const std::function<bool(const QString &sql)> &refused,
              const std::function<void()> &work);

/// Text of the error that `body` throws, "no error" when it throws none.
QString errorOf(const std::function<void()> &body);

} // namespace test
