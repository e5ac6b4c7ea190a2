#include "magazzino/MMGUtils.h"

#include "host/IntfPack.h"
#include "platform/core/Error.h"
#include "platform/core/Translation.h"
#include "platform/data/Connection.h"

using namespace Qt::StringLiterals;

data::Connection &ModuleConnection()
{
    auto *connection =
        GetPackageInstance(packageName)->findChild<data::Connection *>(u"ModADOConn"_s, Qt::FindDirectChildrenOnly);
    if (!connection)
        throw core::Error(core::tr("Il modulo \"%1\" non ha una connessione.").arg(packageName));
    return *connection;
}
