#include "host/schema/Creation.h"

#include "host/schema/HostTables.h"
#include "platform/data/Catalogue.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// In TABLE_VERSION, which is there before anything else. No table may ever have this name.
const QString noteName = u"CREAZIONE"_s;

bool hasNote(data::Connection &connection)
{
    return data::hasTable(connection, versionTable().name) &&
           connection.finds(u"SELECT VERSIONE FROM TABLE_VERSION WHERE TABELLA = ?"_s, {noteName});
}

// What a database can hold rows, numbers or work in, and the host does not make.
bool hasForeignObjects(data::Connection &connection)
{
    QStringList own = {versionTable().name};
    for (const Table &table : baseTables())
        own << table.name << u"GN_"_s + table.key;
    const data::Rows objects = connection.select(
        u"SELECT TRIM(RDB$RELATION_NAME) AS NOME FROM RDB$RELATIONS WHERE COALESCE(RDB$SYSTEM_FLAG, 0) = 0 "
        "UNION ALL SELECT TRIM(RDB$GENERATOR_NAME) FROM RDB$GENERATORS WHERE COALESCE(RDB$SYSTEM_FLAG, 0) = 0 "
        "UNION ALL SELECT '' FROM RDB$PROCEDURES WHERE COALESCE(RDB$SYSTEM_FLAG, 0) = 0"_s);
    for (qsizetype row = 0; row < objects.size(); ++row) {
        if (!own.contains(objects.text(row, u"NOME")))
            return true;
    }
    return false;
}

bool hasRows(data::Connection &connection, const QString &table)
{
    return data::hasTable(connection, table) && connection.finds(u"SELECT FIRST 1 1 AS RIGA FROM "_s + table);
}

} // namespace

void beginCreation(data::Connection &connection)
{
    connection.execute(definitions(versionTable()).first());
    connection.run(u"INSERT INTO TABLE_VERSION(TABELLA, VERSIONE) VALUES(?, ?)"_s, {noteName, u"in corso"_s});
}

void endCreation(data::Connection &connection)
{
    connection.run(u"DELETE FROM TABLE_VERSION WHERE TABELLA = ?"_s, {noteName});
}

bool isCreationUnfinished(data::Connection &connection)
{
    if (hasNote(connection))
        return true;
    const QList<Table> &tables = baseTables();
    return !hasForeignObjects(connection) && std::none_of(tables.begin(), tables.end(), [&](const Table &table) {
        return hasRows(connection, table.name);
    });
}

} // namespace host
