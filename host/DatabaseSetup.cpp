#include "host/DatabaseSetup.h"

#include "host/schema/Creation.h"
#include "host/schema/DemoData.h"
#include "host/schema/HostSchema.h"
#include "platform/core/Error.h"
#include "platform/core/FileAccess.h"
#include "platform/core/Log.h"
#include "platform/core/SaveFile.h"
#include "platform/core/Translation.h"
#include "platform/core/WorkFolder.h"
#include "platform/data/Catalogue.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/DatabaseFile.h"
#include "platform/data/EnginePath.h"

#include <QDir>
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
        return core::tr("Il database \"%1\" non esiste.").arg(name);
    case data::OpenFailure::InUse:
        return core::tr(
                   "Il database \"%1\" è già in uso da un altro programma. Chiudere l'altro programma e riprovare.")
            .arg(name);
    case data::OpenFailure::NotADatabase:
        return core::tr("Il file \"%1\" non è un database oppure è danneggiato.").arg(name);
    case data::OpenFailure::Refused:
        return core::tr("Il server \"%1\" ha rifiutato il nome utente o la password.").arg(address.host);
    case data::OpenFailure::Unreachable:
        return core::tr("Il server \"%1\" non è raggiungibile. Verificare che sia acceso e collegato alla rete.")
            .arg(address.host);
    case data::OpenFailure::NoPermission:
        return core::tr("Non si dispone dei permessi di lettura e scrittura sul file \"%1\".").arg(name);
    case data::OpenFailure::Other:
        break;
    }
    return core::tr("Impossibile aprire il database \"%1\". Il motivo si trova nel registro del programma.").arg(name);
}

using Fill = std::function<void(data::Connection &)>;

void fillNew(const data::DatabaseAddress &address, const Fill &fill)
{
    data::Connection connection(data::nativeConnectionString(address));
    beginCreation(connection);
    createHostSchema(connection);
    fill(connection);
    endCreation(connection);
}

[[noreturn]] void refuseExisting()
{
    throw data::DatabaseError(core::tr("Il file esiste già."), u"CREATE DATABASE"_s);
}

// Under its name the file is there when it is complete; what a cut leaves lies in a work folder, which the next one
// removes.
void createFile(const data::DatabaseAddress &address, const Fill &fill)
{
    const QFileInfo target(address.file);
    QDir().mkpath(target.absolutePath());
    const bool replaces = isUnfinished(address);
    if (!replaces && target.exists())
        refuseExisting();
    const core::WorkFolder work(data::engineFolder(target.absolutePath()));
    data::DatabaseAddress made = address;
    made.file = work.file(u"archivio.fdb"_s);
    data::createDatabase(made);
    fillNew(made, fill);
    core::makePrivate(made.file);
    if (!replaces)
        core::moveToNewName(made.file, target.absoluteFilePath());
    // Another program may have replaced it first, and have a user at work by now.
    else if (isUnfinished(address))
        core::moveIntoPlace(made.file, target.absoluteFilePath());
    else
        refuseExisting();
}

void dropUnfinished(const data::DatabaseAddress &address)
{
    try {
        data::dropDatabase(address);
    } catch (const data::DatabaseError &error) {
        throw core::Error(core::tr("Il database \"%1\", rimasto incompleto, non si può sostituire: forse un'altra "
                                   "postazione lo sta creando.")
                              .arg(address.toString()),
                          error.text());
    }
}

void createOnServer(const data::DatabaseAddress &address, const Fill &fill)
{
    if (isUnfinished(address))
        dropUnfinished(address);
    data::createDatabase(address);
    try {
        fillNew(address, fill);
    } catch (const std::exception &) {
        data::dropQuietly(address, u"eliminazione database"_s);
        throw;
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
    data::Connection connection(data::nativeConnectionString(address));
    if (isCreationUnfinished(connection))
        return core::tr("La creazione dell'archivio \"%1\" si è interrotta o non è ancora finita: non contiene dati e "
                        "va creato di nuovo.")
            .arg(address.toString());
    // Every database of this program has these from its first moment.
    for (const QString &table : {u"TABLE_VERSION"_s, u"OPZIONI"_s, u"UTENTI"_s}) {
        if (!data::hasTable(connection, table))
            return core::tr("Il database \"%1\" non è un archivio di questo programma.").arg(address.toString());
    }
    if (isHostSchemaNewer(connection))
        return core::tr("Il database \"%1\" è stato aggiornato da una versione più recente del programma: per aprirlo "
                        "serve quella.")
            .arg(address.toString());
    return {};
}

void requireDatabase(const data::DatabaseAddress &address)
{
    if (const QString problem = databaseProblem(address); !problem.isEmpty())
        throw core::Error(problem);
}

bool isUnfinished(const data::DatabaseAddress &address)
{
    const QFileInfo file(address.file);
    if (address.isEmbedded() && file.isFile() && file.size() == 0)
        return true;
    if (data::checkDatabase(address).failure != data::OpenFailure::None)
        return false;
    data::Connection connection(data::nativeConnectionString(address));
    return isCreationUnfinished(connection);
}

void createFilledDatabase(const data::DatabaseAddress &address, const std::function<void(data::Connection &)> &fill)
{
    if (address.isEmbedded())
        createFile(address, fill);
    else
        createOnServer(address, fill);
}

void createHostDatabase(const data::DatabaseAddress &address, bool demo)
{
    createFilledDatabase(address, [demo](data::Connection &connection) {
        if (demo)
            insertDemoMasterData(connection);
    });
}

} // namespace host
