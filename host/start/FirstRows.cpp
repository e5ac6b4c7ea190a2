#include "host/start/FirstRows.h"

#include "host/IntfPack.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString option = u"PRIME_RIGHE"_s;
const QString demo = u"dimostrative"_s;
const QString common = u"tabelle comuni"_s;

void insertRowsOfModules(FirstRows rows, data::Connection &connection)
{
    for (int i = 0; i < GetPackageCount(); ++i) {
        const PackageClass &module = GetPackage(i).moduleClass;
        if (const auto &insert = rows == FirstRows::Demo ? module.demoRows : module.commonRows)
            insert(connection);
    }
}

} // namespace

void insertDemoModuleData(data::Connection &connection)
{
    insertRowsOfModules(FirstRows::Demo, connection);
}

void noteFirstRows(FirstRows rows, data::Connection &connection)
{
    connection.run(u"INSERT INTO OPZIONI(OPZIONE, VALORE) VALUES(?, ?)"_s,
                   {option, rows == FirstRows::Demo ? demo : common});
}

void insertNotedFirstRows(data::Connection &connection)
{
    const data::Rows noted =
        connection.select(u"SELECT VALORE FROM OPZIONI WHERE OPZIONE = :OPZIONE"_s, {{u"OPZIONE"_s, option}});
    if (noted.isEmpty())
        return;
    // Both fill empty tables only, so a second run after a failure between them changes nothing.
    insertRowsOfModules(noted.text(0, u"VALORE") == demo ? FirstRows::Demo : FirstRows::CommonTables, connection);
    connection.run(u"DELETE FROM OPZIONI WHERE OPZIONE = ?"_s, {option});
}

} // namespace host
