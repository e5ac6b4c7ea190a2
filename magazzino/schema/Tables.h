#pragma once
#include <QStringList>

/// The module's tables as a new database gets them. Columns that came later are added by the upgrade steps, so a
/// definition here never changes once it was delivered.
namespace schema {

struct Table
{
    QString name;
    QString key;       ///< the first column, filled by trigger from the generator "GN_" + key
    QStringList parts; ///< the other columns and the constraints, as written in CREATE TABLE
};

/// The tables in the order of their creation.
const QList<Table> &tables();

/// CREATE TABLE, CREATE GENERATOR and CREATE TRIGGER of a table, in the order they must run.
QStringList definition(const Table &table);

} // namespace schema
