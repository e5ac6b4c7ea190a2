#pragma once
#include <QString>
#include <QStringList>

namespace data {

class Connection;

/// Where the records of one table are used: rows of another that meet a condition.
struct RecordUse
{
    QString of;        ///< table of the records, "ANA_MAGA"
    QString what;      ///< what uses them, in the plural, "righe di D.d.T."
    QString table;     ///< that holds what uses them
    QString condition; ///< in which :ID is the record's key
};

/// Adds what `uses` returns for the rest of the program's life, behind what is there. The owner of the tables that use
/// calls it while its library loads: then the uses count although the module itself could not be started. The function
/// is called when they are asked for, since a loading library has not made all its texts yet.
void registerUses(QList<RecordUse> (*uses)());

/// What uses the record of `table` with key `id`, a line each: "righe di D.d.T.: 3"; empty when nothing does. Tables
/// that the database does not have do not count. Reads from `connection`; throws DatabaseError.
QStringList usesOf(const QString &table, int id, Connection &connection);

} // namespace data
