#include "host/start/ClosedConnections.h"

#include "host/IntfPack.h"

namespace host {

ClosedConnections::ClosedConnections(const QWidget &mainWindow)
{
    QList<data::Connection *> found = mainWindow.findChildren<data::Connection *>();
    for (int i = 0; i < GetPackageCount(); ++i) {
        if (const QObject *module = GetPackage(i).instance)
            found += module->findChildren<data::Connection *>();
    }
    for (data::Connection *connection : std::as_const(found)) {
        if (!connection->isOpen())
            continue;
        connection->close();
        connections_.append(connection);
    }
}

void ClosedConnections::reopen()
{
    for (const QPointer<data::Connection> &connection : std::as_const(connections_)) {
        if (connection)
            connection->open();
    }
}

} // namespace host
