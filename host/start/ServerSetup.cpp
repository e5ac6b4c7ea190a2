#include "host/start/ServerSetup.h"

#include "host/DatabaseSetup.h"
#include "platform/core/Error.h"
#include "platform/core/Translation.h"
#include "platform/data/Connection.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/DatabaseFile.h"
#include "platform/data/SqlText.h"

#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString administratorName = u"SYSDBA"_s;

QString randomText(int length)
{
    static const QString characters = u"ABCDEFGHJKLMNPQRSTUVWXYZabcdefghijkmnopqrstuvwxyz23456789"_s;
    QString text;
    for (int i = 0; i < length; ++i)
        text += characters[QRandomGenerator::system()->bounded(static_cast<int>(characters.size()))];
    return text;
}

// Users are managed from inside a database, and the server keeps its own to itself.
data::DatabaseAddress scratchBeside(const data::DatabaseAddress &target, const QString &password)
{
    data::DatabaseAddress scratch = target;
    scratch.file = u"%1/corvane-preparazione-%2.fdb"_s.arg(QFileInfo(target.file).path(), randomText(8).toLower());
    scratch.user = administratorName;
    scratch.password = password;
    return scratch;
}

void requireAdministrator(const data::DatabaseAddress &scratch)
{
    switch (data::checkDatabase(scratch).failure) {
    case data::OpenFailure::Refused:
        throw core::Error(
            core::tr("Il server ha rifiutato la password dell'amministratore %1.").arg(administratorName));
    case data::OpenFailure::Unreachable:
        throw core::Error(openProblem(scratch));
    default:
        break;
    }
}

void createScratch(const data::DatabaseAddress &scratch)
{
    try {
        data::createDatabase(scratch);
    } catch (const data::DatabaseError &error) {
        throw core::Error(core::tr("Il server non può scrivere nella cartella \"%1\": deve esistere su quel computer e "
                                   "appartenere all'utente \"firebird\".")
                              .arg(QFileInfo(scratch.file).path()),
                          error.text());
    }
}

void makeUser(const data::DatabaseAddress &target, data::Connection &connection)
{
    const bool exists =
        connection.finds(u"SELECT SEC$USER_NAME FROM SEC$USERS WHERE SEC$USER_NAME = ?"_s, {target.user});
    // Other workstations may be using its password.
    if (exists && !knowsUser(target))
        throw core::Error(
            core::tr("Sul server c'è già l'utente %1, con un'altra password: scriverla al posto di quella proposta.")
                .arg(target.user));
    data::Transaction transaction(connection);
    if (!exists)
        connection.execute(u"CREATE USER %1 PASSWORD %2"_s.arg(target.user, data::quoted(target.password)));
    connection.execute(u"GRANT CREATE DATABASE TO USER "_s + target.user);
    transaction.commit();
}

} // namespace

bool serverAnswers(const QString &machine, int port)
{
    // Whatever it says of a database that nobody has, it says something.
    data::DatabaseAddress nowhere;
    nowhere.host = machine;
    nowhere.port = port;
    nowhere.file = u"corvane-prova"_s;
    nowhere.user = serverUser;
    nowhere.password = u"-"_s;
    return data::checkDatabase(nowhere).failure != data::OpenFailure::Unreachable;
}

QString newServerPassword()
{
    constexpr int length = 16;
    return randomText(length);
}

bool knowsUser(const data::DatabaseAddress &target)
{
    const data::OpenFailure failure = data::checkDatabase(target).failure;
    return failure != data::OpenFailure::Refused && failure != data::OpenFailure::Unreachable;
}

void prepareServer(const data::DatabaseAddress &target, const QString &administratorPassword)
{
    const data::DatabaseAddress scratch = scratchBeside(target, administratorPassword);
    requireAdministrator(scratch);
    createScratch(scratch);
    const auto drop = qScopeGuard([&scratch] { data::dropQuietly(scratch, u"preparazione del server"_s); });
    data::Connection connection(data::nativeConnectionString(scratch));
    makeUser(target, connection);
    connection.close();
}

QString firewallAdvice(const QString &machine, int port)
{
    static const QRegularExpression ownNetwork(u"^(\\d+\\.\\d+\\.\\d+)\\.\\d+$"_s);
    const auto address = ownNetwork.match(machine);
    const QString network = address.hasMatch() ? address.captured(1) + u".0/24"_s : u"192.168.1.0/24"_s;
    return core::tr("Sul computer del server la porta TCP %1 va aperta soltanto per la rete locale, mai verso "
                    "Internet; con ufw: <b>ufw allow from %2 to any port %1 proto tcp</b>. Il server di Debian ascolta "
                    "solo sé stesso finché in <b>/etc/firebird/3.0/firebird.conf</b> non si indica "
                    "<b>RemoteBindAddress = l'indirizzo di quel computer</b>.")
        .arg(port)
        .arg(network);
}

} // namespace host
