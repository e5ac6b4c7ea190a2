#include "platform/data/firebird/OpenFailures.h"

#include <cerrno>

namespace data::firebird {

namespace {

// What an I/O error of the engine means: the vector continues with the operation, the file and the system's reason, a
// number from the embedded engine and a text from a server.
OpenFailure inputOutputFailure(const ISC_STATUS *item, const ISC_STATUS *end)
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
    case isc_connect_reject:
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

} // namespace

OpenFailure openFailure(const Status &status, bool embedded)
{
    OpenFailure ioFailure = OpenFailure::Other;
    for (const ISC_STATUS *item = status.begin(); item < status.end() && *item != isc_arg_end;
         item += *item == isc_arg_cstring ? 3 : 2) {
        if (*item != isc_arg_gds)
            continue;
        // A later, more precise code wins over the I/O error that it explains.
        if (const OpenFailure meaning = meaningOf(item[1], embedded); meaning != OpenFailure::None)
            return meaning;
        if (item[1] == isc_io_error && ioFailure == OpenFailure::Other)
            ioFailure = inputOutputFailure(item, status.end());
    }
    return ioFailure;
}

} // namespace data::firebird
