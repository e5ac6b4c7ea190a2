#pragma once
#include <QString>
#include <QStringList>

namespace host {

/// A table of the host as the base version has it.
struct Table
{
    QString name;
    QString key;         ///< integer key filled from the generator "GN_" + key; empty for tables with keys of their own
    QStringList columns; ///< the other columns and the constraints, as written in CREATE TABLE
    QStringList indexes; ///< "(COLUMN)" or "COMPUTED BY (...)", with UNIQUE before it where needed
};

/// Where the versions of everything are recorded: there before anything else.
const Table &versionTable();
/// The other tables, in the order of their creation. They never change: databases stand there. What comes later is a
/// step of HostSchema.cpp.
const QList<Table> &baseTables();

/// CREATE TABLE, CREATE GENERATOR, CREATE TRIGGER and CREATE INDEX of a table, in the order they must run.
QStringList definitions(const Table &table);

} // namespace host
