#include "host/DatabaseSetup.h"

#include "host/schema/DemoData.h"
#include "host/schema/HostSchema.h"
#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/data/Catalogue.h"
#include "platform/data/Connection.h"
#include "platform/data/DatabaseFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString problemText(data::OpenFailure failure, const data::DatabaseAddress &address)
{
    const QString name = address.toString();
    switch (failure) {
    case data::OpenFailure::None:
        return {};
    case data::OpenFailure::Missing:
        return u"Il database \"%1\" non esiste."_s.arg(name);
    case data::OpenFailure::InUse:
        return u"Il database \"%1\" è già in uso da un altro programma. Chiudere l'altro programma e riprovare."_s.arg(
            name);
    case data::OpenFailure::NotADatabase:
        return u"Il file \"%1\" non è un database oppure è danneggiato."_s.arg(name);
    case data::OpenFailure::Refused:
        return u"Il server \"%1\" ha rifiutato il nome utente o la password."_s.arg(address.host);
    case data::OpenFailure::Unreachable:
        return u"Il server \"%1\" non è raggiungibile. Verificare che sia acceso e collegato alla rete."_s.arg(
            address.host);
    case data::OpenFailure::NoPermission:
        return u"Non si dispone dei permessi di lettura e scrittura sul file \"%1\"."_s.arg(name);
    case data::OpenFailure::Other:
        break;
    }
    return u"Impossibile aprire il database \"%1\". Il motivo si trova nel registro del programma."_s.arg(name);
}

// The failure that made the database useless is the one to be told.
void dropQuietly(const data::DatabaseAddress &address)
{
    try {
        data::dropDatabase(address);
    } catch (const std::exception &error) {
        core::logError(u"eliminazione database"_s, error);
    }
}

} // namespace

QString openProblem(const data::DatabaseAddress &address)
{
    const data::OpenCheck check = data::checkDatabase(address);
    if (!check.databaseText.isEmpty())
        core::logLine(u"apertura database"_s, check.databaseText);
    return problemText(check.failure, address);
}

QString databaseProblem(const data::DatabaseAddress &address)
{
    if (QString problem = openProblem(address); !problem.isEmpty())
        return problem;
    data::Connection connection;
    connection.setConnectionString(data::nativeConnectionString(address));
    connection.open();
    // Every database of this program has these from its first moment.
    for (const QString &table : {u"TABLE_VERSION"_s, u"OPZIONI"_s, u"UTENTI"_s}) {
        if (!data::hasTable(connection, table))
            return u"Il database \"%1\" non è un archivio di questo programma."_s.arg(address.toString());
    }
    if (isHostSchemaNewer(connection))
        return u"Il database \"%1\" è stato aggiornato da una versione più recente del programma: per aprirlo serve "
               "quella."_s.arg(address.toString());
    return {};
}

void requireDatabase(const data::DatabaseAddress &address)
{
    if (const QString problem = databaseProblem(address); !problem.isEmpty())
        throw core::Error(problem);
}

void createFilledDatabase(const data::DatabaseAddress &address, const std::function<void(data::Connection &)> &fill)
{
    if (address.isEmbedded())
        QDir().mkpath(QFileInfo(address.file).absolutePath());
    const bool wasThere = address.isEmbedded() && QFileInfo::exists(address.file);
    bool created = false;
    try {
        data::createDatabase(address);
        created = true;
        data::Connection connection;
        connection.setConnectionString(data::nativeConnectionString(address));
        connection.open();
        createHostSchema(connection);
        fill(connection);
    } catch (const std::exception &) {
        if (address.isEmbedded() && !wasThere)
            QFile::remove(address.file);
        else if (created)
            dropQuietly(address);
        throw;
    }
}

void createHostDatabase(const data::DatabaseAddress &address, bool demo)
{
    createFilledDatabase(address, [demo](data::Connection &connection) {
        if (demo)
            insertDemoMasterData(connection);
    });
}

} // namespace host
