#include "magazzino/MMGUtils.h"

#include "host/IntfPack.h"
#include "platform/core/Error.h"
#include "platform/data/Connection.h"

using namespace Qt::StringLiterals;

data::Connection &ModuleConnection()
{
    auto *connection =
        GetPackageInstance(packageName)->findChild<data::Connection *>(u"ModADOConn"_s, Qt::FindDirectChildrenOnly);
    if (!connection)
        throw core::Error(u"Il modulo \"%1\" non ha una connessione."_s.arg(packageName));
    return *connection;
}
