#include "platform/data/DatabaseFile.h"

#include "platform/core/FileAccess.h"
#include "platform/core/Log.h"
#include "platform/core/Translation.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/SqlText.h"
#include "platform/data/firebird/Attachment.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <array>
#include <cstdlib>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace data {

namespace {

// Made when it is missing. A folder that another account has put in its place, or a link to one, could hand that
// account the program's locks.
bool isOwnFolder(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat found = {};
    if (!QDir().mkpath(path) || ::lstat(name.constData(), &found) != 0 || !S_ISDIR(found.st_mode) ||
        found.st_uid != ::geteuid() || ::chmod(name.constData(), S_IRWXU) != 0)
        return false;
    // The engine opens its old lock files for writing, so each of them counts.
    const QFileInfoList files = QDir(path).entryInfoList(QDir::Files);
    return std::all_of(files.begin(), files.end(), [](const QFileInfo &file) { return file.isWritable(); });
}

// The same for all programs of this account, unless another account was faster in taking its name; empty when there is
// no place for it.
QString temporaryLockFolder()
{
    QString folder = QDir::tempPath() + u"/firebird-lock-"_s + QString::number(geteuid());
    if (isOwnFolder(folder))
        return folder;
    QByteArray made = QFile::encodeName(folder + u"-XXXXXX"_s);
    return ::mkdtemp(made.data()) ? QFile::decodeName(made) : QString();
}

} // namespace

OpenCheck checkDatabase(const DatabaseAddress &address)
{
    if (address.isEmbedded()) {
        const QFileInfo file(address.file);
        if (!file.exists())
            return {OpenFailure::Missing, {}};
        if (!file.isFile())
            return {OpenFailure::NotADatabase, {}};
        if (!file.isReadable() || !file.isWritable())
            return {OpenFailure::NoPermission, {}};
    }
    firebird::Attached attached = firebird::attach(address);
    firebird::Status ignored;
    if (attached.handle)
        isc_detach_database(ignored, &attached.handle);
    return attached.check;
}

void createDatabase(const DatabaseAddress &address)
{
    // The engine would report an existing file as an I/O error only; say it before it is touched.
    if (address.isEmbedded() && QFileInfo::exists(address.file))
        throw DatabaseError(core::tr("Il file esiste già."), u"CREATE DATABASE"_s);
    QString sql = u"CREATE DATABASE "_s + quoted(firebird::attachName(address)) + u" USER "_s + quoted(address.user);
    if (!address.password.isEmpty())
        sql += u" PASSWORD "_s + quoted(address.password);
    sql += u" PAGE_SIZE 8192 DEFAULT CHARACTER SET UTF8"_s;

    firebird::Status status;
    isc_db_handle handle = 0;
    isc_tr_handle transaction = 0;
    const QByteArray text = sql.toUtf8();
    isc_dsql_execute_immediate(status, &handle, &transaction, 0, text.constData(), SQL_DIALECT_V6, nullptr);
    status.require(u"CREATE DATABASE"_s);
    isc_detach_database(status, &handle);
    if (address.isEmbedded())
        core::makePrivate(address.file);
}

void dropDatabase(const DatabaseAddress &address)
{
    isc_db_handle handle = firebird::attach(address).handle;
    if (!handle)
        return;
    firebird::Status status;
    isc_drop_database(status, &handle);
    firebird::Status ignored;
    if (handle)
        isc_detach_database(ignored, &handle);
    status.require(u"DROP DATABASE"_s);
}

void dropQuietly(const DatabaseAddress &address, const QString &where)
{
    constexpr auto patience = std::chrono::seconds(10);
    constexpr unsigned long pause = 50; // milliseconds
    const auto isThere = [&address] {
        const OpenFailure failure = checkDatabase(address).failure;
        return failure == OpenFailure::None || failure == OpenFailure::InUse || failure == OpenFailure::Other;
    };
    for (const QDeadlineTimer end(patience);; QThread::msleep(pause)) {
        const bool isLast = end.hasExpired();
        try {
            dropDatabase(address);
        } catch (const std::exception &error) {
            if (isLast)
                core::logError(where, error);
        }
        if (isLast || !isThere())
            return;
    }
}

void executeWithoutWaiting(const DatabaseAddress &address, const QString &sql)
{
    firebird::Attachment attachment(address);
    firebird::NativeTransaction transaction(attachment, firebird::Access::WriteAtOnce);
    transaction.execute(sql).require(statementKind(sql));
    // An index is made here only, so this is where it can fail, too.
    transaction.commit();
}

QString clientVersion()
{
    std::array<char, 256> text = {};
    isc_get_client_version(text.data());
    return QString::fromLatin1(text.data());
}

void useLockFolder(const QString &path)
{
    QString folder = path;
    if (!isOwnFolder(folder)) {
        folder += u'-' + QString::number(geteuid());
        if (!isOwnFolder(folder))
            folder = temporaryLockFolder();
    }
    if (!folder.isEmpty())
        qputenv("FIREBIRD_LOCK", QFileInfo(folder).absoluteFilePath().toUtf8());
}

} // namespace data
