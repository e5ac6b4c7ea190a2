#pragma once
#include "host/transfer/ImportLookups.h"
#include "platform/core/CsvReader.h"
#include "platform/core/NumberReader.h"
#include "platform/core/Progress.h"

#include <functional>

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
    bool createMissing = false;  ///< a category that is not there is created; otherwise it is a problem
};

/// Hands the records of a file, its header line left out, to a function one after the other. Each call goes through
/// the whole file, which may be longer than the memory.
using RecordSource = std::function<void(const std::function<void(const core::CsvRecord &)> &use)>;

/// What is imported, where, and how.
struct ImportJob
{
    const ImportTarget &target;
    const ImportLookups &lookups;
    RecordSource records;
    ImportOptions options;
};

/// A file seen through the user's decisions: either problems, or so many records that can be written.
struct ImportPlan
{
    QList<ImportProblem> problems; ///< the first thousand
    int problemCount = 0;
    QList<ImportProblem> doubts; ///< the first thousand of what is imported nevertheless
    int doubtCount = 0;
    QList<qsizetype> fields;           ///< numbers of the target's fields that get values
    QList<core::NumberReader> numbers; ///< one for each of `fields`
    int records = 0;
    int updates = 0;       ///< records that change existing ones
    int newCategories = 0; ///< that the records need

    /// Counts a problem, and lists it while there is room.
    void complain(const ImportProblem &problem);
    /// The same of what is imported nevertheless.
    void doubt(const ImportProblem &problem);
};

/// Checks every cell: numbers, lengths, references, required values, codes that come twice or exist, control
/// characters. Nothing is written. Goes through the file twice, since the decimal mark of a column and the codes that
/// come again show in the whole of it only.
ImportPlan planImport(const ImportJob &job);

/// Writes all records and the categories they need in one transaction, or nothing: an error (a core::Error that names
/// the line) and a cancelled `progress` leave nothing behind. A new record gets an empty text, 0 or no reference for an
/// empty cell; an existing one keeps what it has. For a `plan` of the same job without problems.
void writeImport(data::Connection &connection, const ImportJob &job, const ImportPlan &plan, core::Progress &progress);

} // namespace host
