#include "platform/data/DatabaseFile.h"

#include "platform/core/FileAccess.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/SqlText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include <ibase.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace data {

namespace {

QString statusText(const ISC_STATUS *status)
{
    QString text;
    char line[512];
    const ISC_STATUS *rest = status;
    while (fb_interpret(line, sizeof line, &rest) > 0)
        text += (text.isEmpty() ? QString() : u" - "_s) + QString::fromUtf8(line);
    return text;
}

QString attachString(const DatabaseAddress &address)
{
    return address.isEmbedded() ? QFileInfo(address.file).absoluteFilePath() : address.toString();
}

void addText(QByteArray &parameters, char item, const QByteArray &text)
{
    // A length byte limits each item; longer names or passwords do not exist in Firebird.
    const QByteArray cut = text.left(255);
    parameters.append(item).append(static_cast<char>(cut.size())).append(cut);
}

// What an I/O error of the engine means: the vector continues with the operation, the file and the system's reason, a
// number from the embedded engine and a text from a server.
OpenFailure classifyInputOutput(const ISC_STATUS *item, const ISC_STATUS *end)
{
    const auto text = [](ISC_STATUS value) { return QByteArrayView(reinterpret_cast<const char *>(value)); };
    const QByteArrayView operation = item[2] == isc_arg_string ? text(item[3]) : QByteArrayView();
    if (operation == "read")
        return OpenFailure::NotADatabase; // shorter than a database can be
    for (; item < end && *item != isc_arg_end; item += 2) {
        const bool isNumber = *item == isc_arg_unix;
        const bool isText = *item == isc_arg_string || *item == isc_arg_interpreted;
        if (isNumber && (item[1] == EACCES || item[1] == EPERM || item[1] == EROFS))
            return OpenFailure::NoPermission;
        if (isText && text(item[1]).startsWith("Permission denied"))
            return OpenFailure::NoPermission;
    }
    return operation == "open" ? OpenFailure::Missing : OpenFailure::Other;
}

OpenFailure meaningOf(ISC_STATUS code, bool embedded)
{
    switch (code) {
    case isc_login:
        return OpenFailure::Refused;
    case isc_no_priv:
        return embedded ? OpenFailure::NoPermission : OpenFailure::Refused;
    case isc_network_error:
    case isc_net_connect_err:
    case isc_lost_db_connection:
        return OpenFailure::Unreachable;
    case isc_bad_db_format:
    case isc_wrong_ods:
        return OpenFailure::NotADatabase;
    case isc_already_opened:
    case isc_lock_timeout:
    case isc_lock_conflict:
        return OpenFailure::InUse;
    default:
        return OpenFailure::None;
    }
}

OpenFailure classify(const ISC_STATUS *status, bool embedded)
{
    const ISC_STATUS *end = status + ISC_STATUS_LENGTH;
    OpenFailure ioFailure = OpenFailure::Other;
    for (const ISC_STATUS *item = status; item < end && *item != isc_arg_end;
         item += *item == isc_arg_cstring ? 3 : 2) {
        if (*item != isc_arg_gds)
            continue;
        // A later, more precise code wins over the I/O error that it explains.
        if (const OpenFailure meaning = meaningOf(item[1], embedded); meaning != OpenFailure::None)
            return meaning;
        if (item[1] == isc_io_error && ioFailure == OpenFailure::Other)
            ioFailure = classifyInputOutput(item, end);
    }
    return ioFailure;
}

bool failed(const ISC_STATUS *status)
{
    return status[0] == isc_arg_gds && status[1] != 0;
}

QByteArray attachParameters(const DatabaseAddress &address)
{
    QByteArray parameters;
    parameters.append(static_cast<char>(isc_dpb_version1));
    addText(parameters, static_cast<char>(isc_dpb_user_name), address.user.toUtf8());
    if (!address.password.isEmpty())
        addText(parameters, static_cast<char>(isc_dpb_password), address.password.toUtf8());
    addText(parameters, static_cast<char>(isc_dpb_lc_ctype), "UTF8");
    return parameters;
}

isc_db_handle attach(const DatabaseAddress &address, ISC_STATUS *status)
{
    isc_db_handle handle = 0;
    const QByteArray parameters = attachParameters(address);
    const QByteArray name = attachString(address).toUtf8();
    isc_attach_database(status, 0, name.constData(), &handle, static_cast<short>(parameters.size()),
                        parameters.constData());
    return handle;
}

// Leaves its failure in `status`. An index is made at the commit only, so that is where it can fail, too.
void executeOnce(isc_db_handle &database, const QByteArray &sql, ISC_STATUS *status)
{
    static const char noWait[] = {isc_tpb_version3, isc_tpb_write, isc_tpb_read_committed, isc_tpb_rec_version,
                                  isc_tpb_nowait};
    isc_tr_handle transaction = 0;
    isc_start_transaction(status, &transaction, 1, &database, static_cast<unsigned short>(sizeof noWait), noWait);
    if (failed(status))
        return;
    isc_dsql_execute_immediate(status, &database, &transaction, 0, sql.constData(), SQL_DIALECT_V6, nullptr);
    if (!failed(status))
        isc_commit_transaction(status, &transaction);
    // The first failure is the one to tell.
    ISC_STATUS_ARRAY ignored{};
    if (failed(status))
        isc_rollback_transaction(ignored, &transaction);
}

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
    ISC_STATUS_ARRAY status{};
    isc_db_handle handle = attach(address, status);
    if (failed(status))
        return {classify(status, address.isEmbedded()), statusText(status)};
    isc_detach_database(status, &handle);
    return {};
}

void createDatabase(const DatabaseAddress &address)
{
    // The engine would report an existing file as an I/O error only; say it before it is touched.
    if (address.isEmbedded() && QFileInfo::exists(address.file))
        throw DatabaseError(u"Il file esiste già."_s, u"CREATE DATABASE"_s);
    QString sql = u"CREATE DATABASE "_s + quoted(attachString(address)) + u" USER "_s + quoted(address.user);
    if (!address.password.isEmpty())
        sql += u" PASSWORD "_s + quoted(address.password);
    sql += u" PAGE_SIZE 8192 DEFAULT CHARACTER SET UTF8"_s;

    ISC_STATUS_ARRAY status{};
    isc_db_handle handle = 0;
    isc_tr_handle transaction = 0;
    const QByteArray text = sql.toUtf8();
    isc_dsql_execute_immediate(status, &handle, &transaction, 0, text.constData(), SQL_DIALECT_V6, nullptr);
    if (failed(status))
        throw DatabaseError(statusText(status), u"CREATE DATABASE"_s);
    isc_detach_database(status, &handle);
    if (address.isEmbedded())
        core::makePrivate(address.file);
}

void dropDatabase(const DatabaseAddress &address)
{
    ISC_STATUS_ARRAY status{};
    isc_db_handle handle = attach(address, status);
    if (failed(status))
        return;
    isc_drop_database(status, &handle);
    if (!failed(status))
        return;
    const QString text = statusText(status);
    isc_detach_database(status, &handle);
    throw DatabaseError(text, u"DROP DATABASE"_s);
}

void executeWithoutWaiting(const DatabaseAddress &address, const QString &sql)
{
    ISC_STATUS_ARRAY status{};
    isc_db_handle handle = attach(address, status);
    if (!failed(status))
        executeOnce(handle, sql.toUtf8(), status);
    const QString problem = failed(status) ? statusText(status) : QString();
    ISC_STATUS_ARRAY ignored{};
    if (handle)
        isc_detach_database(ignored, &handle);
    if (!problem.isEmpty())
        throw DatabaseError(problem, statementKind(sql));
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
