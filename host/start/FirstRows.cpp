#include "host/start/FirstRows.h"

#include "host/schema/DemoData.h"
#include "platform/data/Connection.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString option = u"PRIME_RIGHE"_s;
const QString demo = u"dimostrative"_s;
const QString common = u"tabelle comuni"_s;

} // namespace

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
    if (noted.text(0, u"VALORE") == demo)
        insertDemoWarehouseData(connection);
    else
        insertCommonWarehouseTables(connection);
    connection.run(u"DELETE FROM OPZIONI WHERE OPZIONE = ?"_s, {option});
}

} // namespace host
