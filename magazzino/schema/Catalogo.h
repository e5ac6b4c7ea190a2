#pragma once
#include <QStringList>

#include <span>

/// The module's tables as a new database gets them. Columns that came later are added by the upgrade steps, so a
/// definition here never changes once it was delivered.
namespace schema {

struct Colonna
{
    QStringView nome;
    QStringView tipo; ///< as written in CREATE TABLE
    bool obbligatoria = false;
};

struct Tabella
{
    QStringView nome;
    std::span<const Colonna> colonne; ///< the first one is the key, filled by trigger from the generator "GN_" + key
    QStringList vincoli;              ///< in the order written behind the columns
};

/// The tables in the order of their creation.
const QList<Tabella> &catalogo();

/// CREATE TABLE, CREATE GENERATOR and CREATE TRIGGER of a table, in the order they must run.
QStringList definizione(const Tabella &tabella);

} // namespace schema
