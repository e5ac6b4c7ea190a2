#pragma once
#include "platform/data/Rows.h"

#include <QObject>

#include <functional>
#include <map>
#include <memory>

namespace data {

class Driver;
class Statement;

/// Named parameters of a query, without the colon.
using Parameters = QVariantMap;

/// One database connection with its single transaction. Every statement of the program goes through here; a statement
/// that the database refuses, also one that fails only while its rows are fetched, throws DatabaseError.
///
/// Rows that another session holds are waited for, but not without limit, nor is a server that no longer answers (see
/// WaitLimits): the statement fails then. No message box, dialog or event loop may run inside a transaction, because
/// its own locks make others wait.
class Connection : public QObject
{
    Q_OBJECT

public:
    /// A closed connection.
    explicit Connection(QObject *parent = nullptr);
    /// One that is open; throws DatabaseError.
    explicit Connection(const QString &connectionString);
    ~Connection() override;

    /// ADO-style text (see driverSettings()); takes effect at the next open().
    void setConnectionString(const QString &text) { connectionString_ = text; }
    /// As it was set; may hold a password.
    QString connectionString() const { return connectionString_; }

    /// Was it opened? A server that went away since shows at the next statement.
    bool isOpen() const { return driver_ != nullptr; }
    /// Opens the database; does nothing when it is open. Throws DatabaseError.
    void open();
    /// Closes it with its locks, also when a transaction was left open.
    void close();

    /// Is there a Transaction on it?
    bool inTransaction() const { return inTransaction_; }

    /// Runs a command text; outside a transaction it commits at once.
    void execute(const QString &sql);
    /// The same with positional values; returns the rows that a RETURNING clause or a SELECT gives. A DECIMAL is bound
    /// as given, so round it first (core::roundDecimal); one too large for two places is refused. Inside a transaction
    /// the statement stays prepared for its repetition.
    Rows run(const QString &sql, const QVariantList &values = {});
    /// Does this query give a row?
    bool finds(const QString &sql, const QVariantList &values = {}) { return !run(sql, values).isEmpty(); }
    /// Runs a query with named parameters (":NAME" in its text) and fetches all its rows.
    Rows select(const QString &sql, const Parameters &parameters = {});
    /// Fetches the rows of a query with positional values into `rows`, which keep those that came before an error.
    void selectInto(Rows &rows, const QString &sql, const QVariantList &values = {});
    /// Hands the rows of a query to `row` one after the other, for results that are too long to be held. `row` may run
    /// other statements of the same transaction.
    void forEach(const QString &sql, const std::function<void(QVariantList &&)> &row);

    /// Current value of a generator, which is not advanced.
    int lastGeneratorValue(const QString &generator);

    /// Called with the text of every statement before it runs; what it throws is treated as the statement's failure. A
    /// seam for tests: refused statements, other workstations that write in between.
    void setStatementHook(std::function<void(const QString &)> hook) { hook_ = std::move(hook); }

    /// Rows that the last insert, update or delete with bound values touched; 0 after execute() and after a block.
    int affectedRows() const { return affectedRows_; }

private:
    friend class Transaction;
    void begin();
    void commit();
    void rollback();

    void prepareFor(const QString &sql);
    void ensureOpen();
    /// Runs `body` and remembers a lost connection.
    template <typename Body>
    auto noting(Body &&body);
    void noteWriting(const QString &sql);
    Statement &statement(const QString &sql, std::unique_ptr<Statement> &shortLived);
    void fetch(Rows &rows, const QString &sql, const QVariantList &values);
    Rows fetch(const QString &sql, const QVariantList &values);

    std::function<void(const QString &)> hook_;
    QString connectionString_;
    std::unique_ptr<Driver> driver_;
    std::map<QString, std::unique_ptr<Statement>> statements_; // prepared in the running transaction
    QStringList written_;                                      // tables, in the running transaction
    bool inTransaction_ = false;
    bool lost_ = false; // the server went away; the next use outside a transaction connects again
    int affectedRows_ = 0;
};

/// A transaction as a scope: begun by the constructor (which throws when the connection already has one), rolled back
/// by the destructor unless committed.
class Transaction
{
public:
    /// Throws DatabaseError when it cannot begin, also when the connection already has one.
    explicit Transaction(Connection &connection)
        : connection_(connection)
    {
        connection_.begin();
    }
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    /// Ends it for good. Throws DatabaseError; it is rolled back then.
    void commit();

private:
    Connection &connection_;
    bool open_ = true;
};

} // namespace data
