#pragma once
#include <QStringList>

#include <span>

/// The module's tables as a new database gets them. Columns that came later are added by the upgrade steps, so a
/// definition here never changes once it was delivered.
namespace schema {

struct Column
{
    QStringView name;
    QStringView type; ///< as written in CREATE TABLE
    bool required = false;
};

struct Table
{
    QStringView name;
    std::span<const Column> columns; ///< the first one is the key, filled by trigger from the generator "GN_" + key
    QStringList constraints;         ///< in the order written behind the columns
};

/// The tables in the order of their creation.
const QList<Table> &tables();

/// CREATE TABLE, CREATE GENERATOR and CREATE TRIGGER of a table, in the order they must run.
QStringList definition(const Table &table);

} // namespace schema
