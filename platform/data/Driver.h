#pragma once
#include "platform/data/Rows.h"

#include <memory>

namespace data {

struct DriverSettings;

/// A statement that the database has understood; it may be run again and again.
class Statement
{
public:
    Statement() = default;
    virtual ~Statement() = default;
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    /// What a row of its result has; empty for statements without one.
    virtual const QList<Column> &columns() const = 0;
    /// Runs it with a value for each "?"; the rest of an earlier result is given up.
    virtual void execute(const QVariantList &values) = 0;
    /// The result's next row; false behind the last one.
    virtual bool next(QVariantList &row) = 0;
    /// Rows that the last execute() inserted, changed or deleted.
    virtual int affectedRows() = 0;
};

/// What a reading outside a transaction sees.
enum class View
{
    OneMoment, ///< all rows as they were when it began
    Latest     ///< each row as it is when the database comes to it; spares beginning and ending a transaction
};

/// An open database below Connection, with at most one transaction. Whatever the database refuses throws DatabaseError.
class Driver
{
public:
    Driver() = default;
    virtual ~Driver() = default;
    Driver(const Driver &) = delete;
    Driver &operator=(const Driver &) = delete;

    /// Starts the transaction; there must be none.
    virtual void begin() = 0;
    /// When it fails, the transaction is still there and waits for rollback().
    virtual void commit() = 0;
    /// Ends the transaction, also after a commit that failed; nothing of it stays.
    virtual void rollback() = 0;
    /// For the running transaction; without one, for a reading with the given view. A statement ends before the
    /// transaction in which it was prepared.
    virtual std::unique_ptr<Statement> prepare(const QString &sql, View view) = 0;
    /// Runs a command without values in the running transaction; its text is not to be expected again.
    virtual void executeOnce(const QString &sql) = 0;
    /// Asks the statement that is running in another thread to fail. Where that is not possible, it goes on.
    virtual void cancel() {}
};

/// Opens a database with the driver that its settings name. Throws DatabaseError.
std::unique_ptr<Driver> openDriver(const DriverSettings &settings);

} // namespace data
