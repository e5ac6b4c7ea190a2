#pragma once
#include "host/transfer/ImportPlan.h"

namespace host {

/// One record to write. An invalid value is an empty cell; a MissingCategory stands for the key that it will get.
struct PlannedRecord
{
    int line = 0;
    int key = -1; ///< of the record to change; -1 for a new one
    QVariantList values;
};

/// Turns the cells of a file's records into what the target's fields get.
class RecordReader
{
public:
    using Complain = std::function<void(const ImportProblem &)>;

    /// `plan` says which fields there are and how the file writes numbers; both arguments stay with the caller.
    RecordReader(const ImportJob &job, const ImportPlan &plan);

    /// The values; `complain` hears of those that cannot be taken.
    PlannedRecord read(const core::CsvRecord &record, const Complain &complain) const;

    /// The text that stands for a field.
    QString text(const core::CsvRecord &record, qsizetype field) const;
    /// The header of a field's column, for messages.
    QString header(qsizetype field) const;

private:
    QVariant value(const core::CsvRecord &record, qsizetype index, const Complain &complain) const;
    QVariant reference(qsizetype field, const QString &text,
                       const std::function<void(const QString &)> &complain) const;
    static QVariant amount(const QString &text, const core::NumberReader &numbers,
                           const std::function<void(const QString &)> &complain);

    const ImportJob &job_;
    const ImportPlan &plan_;
};

} // namespace host
