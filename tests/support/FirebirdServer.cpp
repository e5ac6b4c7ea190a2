#include "tests/support/FirebirdServer.h"

#include "platform/core/Error.h"
#include "platform/core/SaveFile.h"
#include "platform/data/DatabaseFile.h"

#include <QtCore>

#include <csignal>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace test {

namespace {

const QString password = u"Prova;1"_s;
constexpr int patience = 20000; // milliseconds for anything that another process does

int freePort()
{
    const int socketHandle = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in local{};
    local.sin_family = AF_INET;
    local.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof local;
    auto *address = reinterpret_cast<sockaddr *>(&local);
    const bool found = bind(socketHandle, address, size) == 0 && getsockname(socketHandle, address, &size) == 0;
    close(socketHandle);
    if (!found)
        throw core::Error(u"There is no free port."_s);
    return ntohs(local.sin_port);
}

} // namespace

FirebirdServer::FirebirdServer()
    : port_(freePort())
{
    process_.setProcessEnvironment(environment());
    process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    writeConfiguration();
    createSecurityDatabase();
    start();
}

FirebirdServer::~FirebirdServer()
{
    process_.terminate();
    if (!process_.waitForFinished(patience))
        crash();
}

QProcessEnvironment FirebirdServer::environment() const
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(u"FIREBIRD"_s, folder());
    variables.insert(u"FIREBIRD_LOCK"_s, folder_.filePath(u"lock"_s));
    return variables;
}

void FirebirdServer::writeConfiguration()
{
    QDir(folder()).mkdir(u"lock"_s);
    // The packaged password file is root's alone, so users live in a database of this folder.
    core::saveFile(folder_.filePath(u"firebird.conf"_s),
                   "RemoteBindAddress = 127.0.0.1\nAuthServer = Srp\nUserManager = Srp\nSecurityDatabase = " +
                       QFile::encodeName(folder_.filePath(u"security.fdb"_s)) + '\n');
    for (const QString &empty : {u"plugins.conf"_s, u"databases.conf"_s})
        core::saveFile(folder_.filePath(empty), {});
}

void FirebirdServer::createSecurityDatabase()
{
    QProcess isql;
    isql.setProcessEnvironment(environment());
    isql.start(u"isql-fb"_s, {u"-q"_s, u"-b"_s, u"-user"_s, u"SYSDBA"_s});
    isql.write(u"create database '%1' user SYSDBA;\ncreate user SYSDBA password '%2' using plugin Srp;\ncommit;\n"_s
                   .arg(folder_.filePath(u"security.fdb"_s), password)
                   .toUtf8());
    isql.closeWriteChannel();
    if (!isql.waitForFinished(patience) || isql.exitCode() != 0)
        throw core::Error(u"isql-fb: "_s + QString::fromUtf8(isql.readAllStandardError()) + isql.errorString());
}

data::DatabaseAddress FirebirdServer::address(const QString &name) const
{
    data::DatabaseAddress address;
    address.host = u"127.0.0.1"_s;
    address.port = port_;
    address.file = folder_.filePath(name);
    address.password = password;
    return address;
}

void FirebirdServer::start()
{
    process_.start(u"/usr/sbin/firebird"_s, {u"-e"_s, folder(), u"-p"_s, QString::number(port_)});
    const QDeadlineTimer deadline(patience);
    // Any answer will do, also that there is no such database. Waiting for its end notices a server that dies.
    while (data::checkDatabase(address(u"none.fdb"_s)).failure == data::OpenFailure::Unreachable) {
        if (process_.waitForFinished(20) || process_.state() == QProcess::NotRunning || deadline.hasExpired())
            throw core::Error(u"The server does not answer: "_s + QString::fromUtf8(process_.readAllStandardError()) +
                              process_.errorString());
    }
}

void FirebirdServer::hang() const
{
    ::kill(static_cast<pid_t>(process_.processId()), SIGSTOP);
}

void FirebirdServer::goOn() const
{
    ::kill(static_cast<pid_t>(process_.processId()), SIGCONT);
}

void FirebirdServer::crash()
{
    process_.kill();
    process_.waitForFinished(patience);
}

} // namespace test
