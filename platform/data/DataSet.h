#pragma once
#include "platform/data/Connection.h"

#include <QDate>
#include <QPointer>
#include <QTime>

namespace data {

enum class CursorType
{
    Keyset,
    Static,
    ForwardOnly
};
enum class CursorLocation
{
    Client,
    Server
};

/// The table that a data set writes to, and its key column. The key is read back after an insert, because a trigger may
/// replace the value given.
struct UpdateTarget
{
    QString table;
    QString key;
};

/// A query with a current row that can be edited, in batch-update mode: changes wait until updateBatch() writes them.
///
/// All rows are fetched by open(), since a database cursor dies at the commit. A forward-only data set cannot go back
/// to its first row once it has left it. Texts are written as given (empty stays empty), an invalid QVariant writes
/// NULL; numbers are rounded to the column's decimals, halves away from zero.
class DataSet : public QObject
{
    Q_OBJECT

public:
    /// A closed data set on `connection`, which it does not own.
    explicit DataSet(Connection *connection, QObject *parent = nullptr);

    /// Takes effect at the next open().
    void setConnection(Connection *connection) { connection_ = connection; }
    /// Null when the connection is gone.
    Connection *connection() const { return connection_; }
    /// The query, with its parameters as ":name". Closes the data set and forgets their values.
    void setCommandText(const QString &sql);
    /// The query as it was set.
    QString commandText() const { return commandText_; }
    /// Where changed rows go; without it nothing can be written.
    void setUpdateTarget(UpdateTarget target) { target_ = std::move(target); }
    /// The table and key as they were set.
    const UpdateTarget &updateTarget() const { return target_; }
    /// Only a forward-only cursor behaves otherwise than the rest: see the class.
    void setCursorType(CursorType type) { cursorType_ = type; }
    /// Keyset unless set.
    CursorType cursorType() const { return cursorType_; }
    /// Kept for who asks; the rows are always held here.
    void setCursorLocation(CursorLocation location) { cursorLocation_ = location; }
    /// Client unless set.
    CursorLocation cursorLocation() const { return cursorLocation_; }

    /// Value of the parameter ":name" of the command text, used by the next open().
    void setParameter(const QString &name, const QVariant &value) { parameters_[name] = value; }

    /// Fetches the rows and stands on the first one. Throws DatabaseError.
    void open();
    /// The same with rows that were read elsewhere.
    void openWith(Rows rows);
    /// Drops the rows and every change that was not written.
    void close();
    /// close() and open() again with the same parameters.
    void requery();
    /// Forgets the fetched rows but stays open for new ones: somebody has just deleted them.
    void forgetRows();
    /// Were the rows fetched?
    bool isOpen() const { return open_; }

    /// Has it no row? Also true while it is closed.
    bool isEmpty() const { return rows_.isEmpty(); }
    /// Does it stand behind its last row?
    bool atEnd() const { return current_ >= rows_.size(); }
    /// How many rows it has, the new ones included.
    int recordCount() const { return static_cast<int>(rows_.size()); }
    /// All rows as they were fetched and changed since.
    const Rows &rows() const { return rows_; }
    /// Stands on the first row. Throws core::Error while closed, or when a forward-only one has left it.
    void first();
    /// Goes one row on, at the last one behind the end. Throws core::Error while closed.
    void next();
    /// Stands on the first row whose `column` equals `value` exactly (case and blanks count); false, and the current
    /// row unchanged, when there is none.
    bool locate(const QString &column, const QVariant &value);
    /// Orders the fetched rows by an integer column and stands on the first one.
    void sortByInteger(const QString &column);

    /// All values of the current row. There must be one.
    const QVariantList &currentValues() const { return rows_.values(current_); }
    /// The current row's value, or the one just set; NULL is an invalid QVariant.
    QVariant value(const QString &column) const;
    /// Is the current row's value NULL? Throws as value().
    bool isNull(const QString &column) const { return !value(column).isValid(); }
    /// The value as text; NULL is empty. Throws as value().
    QString text(const QString &column) const { return value(column).toString(); }
    /// The value as a number; NULL is 0. Throws as value().
    double number(const QString &column) const { return value(column).toDouble(); }
    /// `nullValue` for NULL.
    int integer(const QString &column, int nullValue = 0) const;
    /// The value as a date; NULL is an invalid one. Throws as value().
    QDate date(const QString &column) const { return value(column).toDate(); }
    /// The value as a time of day; NULL is an invalid one. Throws as value().
    QTime time(const QString &column) const { return value(column).toTime(); }

    /// Starts a new row; its columns are written by setValue() and the rest is left to the database.
    void append();
    /// Starts changing the current row; on an empty data set it starts a new one.
    void edit();
    /// Sets a column of the row being changed. Throws core::Error when none is, or for an unknown column.
    void setValue(const QString &column, const QVariant &value);
    /// Ends the change of the row; it waits for updateBatch().
    void post();
    /// Writes all pending rows in the order they were posted (a row still being changed is posted first). After an
    /// insert the row holds the key really given and what the database put into columns that were not set. Throws
    /// DatabaseError; also when a row to update is no longer there.
    void updateBatch();

private:
    struct Change
    {
        qsizetype row = -1;
        bool insert = false;
        QVariant oldKey;
        QList<int> columns; // in the order they were set
    };

    void requireOpen() const;
    int columnIndex(const QString &column) const;
    QVariant forWriting(int column, const QVariant &value) const;
    void write(const Change &change);
    void insert(const Change &change, const QStringList &names, const QVariantList &values);

    QPointer<Connection> connection_;
    QString commandText_;
    Parameters parameters_;
    UpdateTarget target_;
    CursorType cursorType_ = CursorType::Keyset;
    CursorLocation cursorLocation_ = CursorLocation::Client;

    Rows rows_;
    qsizetype current_ = 0;
    bool open_ = false;
    std::optional<Change> editing_;
    QList<Change> pending_;
};

} // namespace data
