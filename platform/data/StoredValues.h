#pragma once
#include <QList>
#include <QStringList>
#include <QVariant>

namespace data {

class DataSet;

/// What was stored of a record at one moment: its row and the rows that belong to it, as values. Two of them tell
/// whether somebody changed the record in between.
///
/// Keys of the rows do not count, since every save of a document writes its rows anew, and neither does the difference
/// between NULL and an empty text, which nobody sees.
class StoredValues
{
public:
    /// Of a record that does not exist.
    StoredValues() = default;
    /// From the current row of `record` (none: the record does not exist) and all rows of `details` (may be null), in
    /// the order they have there. Both must be open.
    StoredValues(const DataSet &record, const DataSet *details);

    /// What state() of another one was.
    static StoredValues ofState(const QVariant &state);
    /// Everything that is known, for a file.
    QVariant state() const;

    /// Was there no such record?
    bool isMissing() const { return rows_.isEmpty(); }
    bool operator==(const StoredValues &) const = default;

private:
    QList<QStringList> rows_; // the record's own first
};

} // namespace data
