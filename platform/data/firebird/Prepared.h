#pragma once
#include "platform/data/firebird/Descriptor.h"

#include <list>
#include <memory>

namespace data::firebird {

/// A statement that the database has understood, with the room for its parameters and its row. It belongs to the
/// attachment: transaction after transaction may run it, one at a time.
class Prepared
{
public:
    /// Has it understood in `transaction`. Throws DatabaseError.
    Prepared(Attachment &attachment, NativeTransaction &transaction, const QString &sql);
    /// Drops it on the database's side.
    ~Prepared();
    Prepared(const Prepared &) = delete;
    Prepared &operator=(const Prepared &) = delete;

    const QString &sql() const { return sql_; }
    isc_stmt_handle *handle() { return &handle_; }
    Descriptor &parameters() { return parameters_; }
    Descriptor &result() { return result_; }
    const QList<Column> &columns() const { return columns_; }
    /// Gives it any number of rows, through a cursor?
    bool hasCursor() const { return kind_ == isc_info_sql_stmt_select || kind_ == isc_info_sql_stmt_select_for_upd; }
    /// Gives it one row together with its execution, as RETURNING does?
    bool givesOneRow() const { return kind_ == isc_info_sql_stmt_exec_procedure && result_.size() > 0; }
    /// Rows that its last run inserted, changed or deleted. Asks the database.
    int affectedRows();
    /// Ends its cursor.
    void close() { release(DSQL_close); }

    /// Calls the client library; `function` takes the status. Throws DatabaseError.
    template <typename Function>
    void call(Function &&function)
    {
        Status status;
        attachment_.call([&] { function(status); });
        if (status.failed())
            status.require(kindOfStatement());
    }
    /// Verb and object, for errors.
    QString kindOfStatement() const;

private:
    void prepare(NativeTransaction &transaction);
    void ask(char item, unsigned char *answer, short size);
    void release(unsigned short how);

    Attachment &attachment_;
    QString sql_;
    isc_stmt_handle handle_ = 0;
    Descriptor parameters_;
    Descriptor result_;
    QList<Column> columns_;
    int kind_ = 0;
};

/// The prepared statements of an attachment that nobody is running: preparing one takes a server as long as running it.
class PreparedStore
{
public:
    /// The statement of that text, which is the caller's then; null when there is none.
    std::unique_ptr<Prepared> take(const QString &sql);
    /// Puts it where take() finds it; those that were not used for longest go.
    void keep(std::unique_ptr<Prepared> statement);
    /// Drops them all. A definition needs that: the database changes no table that a prepared statement uses.
    void clear() { statements_.clear(); }

private:
    std::list<std::unique_ptr<Prepared>> statements_; // the last used first
};

} // namespace data::firebird
