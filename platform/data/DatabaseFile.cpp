#include "platform/data/DatabaseFile.h"

#include "platform/data/DatabaseError.h"
#include "platform/data/SqlText.h"

#include <QDir>
#include <QFileInfo>

#include <ibase.h>

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

OpenFailure classify(const ISC_STATUS *status, const DatabaseAddress &address)
{
    for (const ISC_STATUS *item = status; *item != isc_arg_end && item - status < ISC_STATUS_LENGTH; item += 2) {
        if (*item != isc_arg_gds) {
            if (*item == isc_arg_cstring)
                ++item;
            continue;
        }
        switch (item[1]) {
        case isc_login:
        case isc_no_priv:
            return OpenFailure::Refused;
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
        case isc_io_error:
            if (!address.isEmbedded())
                return OpenFailure::Missing;
            break;
        default:
            break;
        }
    }
    return OpenFailure::Other;
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
    }
    QByteArray parameters;
    parameters.append(static_cast<char>(isc_dpb_version1));
    addText(parameters, static_cast<char>(isc_dpb_user_name), address.user.toUtf8());
    if (!address.password.isEmpty())
        addText(parameters, static_cast<char>(isc_dpb_password), address.password.toUtf8());
    addText(parameters, static_cast<char>(isc_dpb_lc_ctype), "UTF8");

    ISC_STATUS_ARRAY status{};
    isc_db_handle handle = 0;
    const QByteArray name = attachString(address).toUtf8();
    isc_attach_database(status, 0, name.constData(), &handle, static_cast<short>(parameters.size()),
                        parameters.constData());
    if (status[0] == isc_arg_gds && status[1] != 0)
        return {classify(status, address), statusText(status)};
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
    if (status[0] == isc_arg_gds && status[1] != 0)
        throw DatabaseError(statusText(status), u"CREATE DATABASE"_s);
    isc_detach_database(status, &handle);
}

void useLockFolder(const QString &path)
{
    QDir().mkpath(path);
    qputenv("FIREBIRD_LOCK", QFileInfo(path).absoluteFilePath().toUtf8());
}

} // namespace data
