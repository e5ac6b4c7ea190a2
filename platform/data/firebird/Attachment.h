#pragma once
#include "platform/data/ConnectionString.h"
#include "platform/data/DatabaseFile.h"
#include "platform/data/firebird/ServerWatch.h"
#include "platform/data/firebird/Status.h"

namespace data::firebird {

/// The handle of an opened database, or why there is none.
struct Attached
{
    isc_db_handle handle = 0;
    OpenCheck check;
};

/// Opens a database. A server is given up when it has not let us in within waitLimits().answer.
Attached attach(const DatabaseAddress &address);

/// What `attach` and CREATE DATABASE name a database by.
QString attachName(const DatabaseAddress &address);

/// An opened database as a scope. Every call that may reach a server goes through call(), so that one which no longer
/// answers is given up.
class Attachment
{
public:
    /// Throws DatabaseError.
    explicit Attachment(const DatabaseAddress &address);
    ~Attachment();
    Attachment(const Attachment &) = delete;
    Attachment &operator=(const Attachment &) = delete;

    /// What the client library knows the attachment by; 0 once it is gone.
    isc_db_handle *handle() { return &handle_; }

    /// Runs `function`, in which the server is waited for; given up with the attachment when it does not answer.
    template <typename Function>
    void call(Function &&function)
    {
        const WatchedCall watched(address_, &handle_);
        function();
    }

    /// Lets the call that another thread is in fail.
    void cancel();
    /// Ends the attachment on the engine's side, with its transactions and their locks; every later call fails.
    void abandon();

private:
    DatabaseAddress address_;
    isc_db_handle handle_ = 0;
};

/// How a transaction sees the data of others and waits for them.
enum class Access
{
    Write,       ///< its own view; waits for locked rows as long as waitLimits().lock
    WriteAtOnce, ///< the latest rows; fails at once where it would have to wait
    Read,        ///< its own view, changes nothing
    ReadLatest   ///< the latest rows, changes nothing; may stay open without keeping former versions of rows alive
};

/// A transaction of an attachment as a scope, rolled back unless committed.
class NativeTransaction
{
public:
    /// Throws DatabaseError.
    NativeTransaction(Attachment &attachment, Access access);
    ~NativeTransaction();
    NativeTransaction(const NativeTransaction &) = delete;
    NativeTransaction &operator=(const NativeTransaction &) = delete;

    /// What the client library knows the transaction by; 0 once it has ended.
    isc_tr_handle *handle() { return &handle_; }

    /// Runs a statement without rows and without parameters; the status tells how it went.
    Status execute(const QString &sql);
    /// Throws DatabaseError; the transaction then is as before and can be rolled back.
    void commit();
    /// Throws DatabaseError when the connection is gone; the engine has rolled back by itself then.
    void rollback();

private:
    Attachment &attachment_;
    isc_tr_handle handle_ = 0;
};

} // namespace data::firebird
