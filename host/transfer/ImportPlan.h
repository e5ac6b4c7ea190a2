#pragma once
#include "host/transfer/CsvReader.h"
#include "host/transfer/ImportLookups.h"

#include <QVariant>

namespace core {
class Progress;
}

namespace host {

/// Why a cell cannot be imported.
struct ImportProblem
{
    int line = 0;   ///< of the file
    QString column; ///< its header
    QString message;
};

/// What the user decided.
struct ImportOptions
{
    QList<int> columns;          ///< per field of the target the CSV column from 0, or -1
    QStringList headers;         ///< names of the CSV columns, for messages
    bool updateExisting = false; ///< a code that is there changes its record; otherwise it is a problem
};

/// One record to write. An invalid value is an empty cell.
struct PlannedRecord
{
    int line = 0;
    int key = -1; ///< of the record to change; -1 for a new one
    QVariantList values;
};

/// A file seen through the user's decisions: either problems, or records that can be written.
struct ImportPlan
{
    QList<ImportProblem> problems;
    QList<qsizetype> fields; ///< numbers of the target's fields that the values belong to
    QList<PlannedRecord> records;
    int updates = 0; ///< records that change existing ones
};

/// Checks every cell of `records`, which hold no header line: numbers, lengths, references, required values, codes
/// that come twice or exist. Nothing is written.
ImportPlan planImport(const ImportTarget &target, const ImportLookups &lookups, const QList<CsvRecord> &records,
                      const ImportOptions &options);

/// Writes all records in one transaction, or none: an error (a core::Error that names the line) and a cancelled
/// `progress` leave nothing behind. A new record gets an empty text, 0 or no reference for an empty cell; an existing
/// one keeps what it has. For a plan without problems.
void writeImport(data::Connection &connection, const ImportTarget &target, const ImportPlan &plan,
                 core::Progress &progress);

} // namespace host
