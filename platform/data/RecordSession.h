#pragma once
#include "platform/data/StoredValues.h"

#include <functional>

namespace data {

class DataSet;

/// What is in hand of a record: its key, and what of it stands in the database.
struct RecordState
{
    int id = -1;                ///< -1 for a new record that was never given a key
    bool isNew = true;          ///< it was never saved
    bool keyWithoutRow = false; ///< a save that failed took the key; another workstation's row may stand under it
    StoredValues known;         ///< what was stored when it was last read or written,
    int knownKey = -1;          ///< under which key

    /// Key of the record's row in the database, -1 while it has none.
    int storedKey() const { return isNew || keyWithoutRow ? -1 : id; }
};

/// Reads one record with the rows that belong to it, and writes it back unless somebody else changed or deleted it in
/// between: it keeps what was stored when the record was last read or written, and looks again before it writes.
class RecordSession
{
public:
    /// What write() takes for stored and overwrites.
    enum class Expected
    {
        Known, ///< what this session read or wrote last
        Found  ///< what the write() before found, because the user agrees to overwrite that
    };

    /// A new record for `record`, a data set over one row of its update target, whose parameter is named as its key.
    explicit RecordSession(DataSet *record)
        : record_(record)
    {
    }

    /// The data set of the rows that belong to the record, by the record's key: read with it, in the order of their
    /// keys. Null for none.
    void setDetails(DataSet *details) { details_ = details; }

    /// What is in hand; set from outside where a form is emptied, or gets back what it gave up.
    RecordState &state() { return state_; }
    const RecordState &state() const { return state_; }
    /// Reads a record and its rows at one moment, and by `further` what is needed besides; its data sets stand on the
    /// first row. False, and the state as it was, when there is no such record. Throws what the database throws.
    bool read(int id, const std::function<void()> &further);
    /// Writes the record in one transaction: `fill` sets the columns of its row besides the key, and `writeDetails`
    /// writes what belongs to it, by the key that was really given. False, with nothing written, when something
    /// else than expected is stored; nothing is asked here, since no box may be shown while a transaction holds locks.
    /// Throws what the database and the two functions throw; then call writeFailed().
    bool write(Expected expected, const std::function<void(DataSet &)> &fill,
               const std::function<void()> &writeDetails);
    /// The save in which write() was called has ended with an error: the record has the key that it had before.
    void writeFailed();

    /// Did the write() that returned false find no such record at all?
    bool foundNone() const { return found_.isMissing(); }
    /// While write() writes a deleted record anew: the key it had before; otherwise -1.
    int replacedKey() const { return replacedKey_; }
    /// The data set of the record's row.
    DataSet &record() const { return *record_; }

private:
    void fetch(int id);
    bool findsAsExpected(Expected expected);
    void beginRow();
    void takeNewKey();
    const QString &key() const;

    DataSet *record_;
    DataSet *details_ = nullptr;
    RecordState state_;
    StoredValues found_;
    int replacedKey_ = -1;
};

} // namespace data
