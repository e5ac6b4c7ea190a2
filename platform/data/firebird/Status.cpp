#include "platform/data/firebird/Status.h"

#include "platform/data/DatabaseError.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace data::firebird {

namespace {

Refusal refusalOf(const Status &status)
{
    static constexpr ISC_STATUS losses[] = {isc_network_error,      isc_net_read_err,  isc_net_write_err,
                                            isc_lost_db_connection, isc_bad_db_handle, isc_att_shutdown};
    const bool lost =
        std::any_of(std::begin(losses), std::end(losses), [&status](ISC_STATUS code) { return status.has(code); });
    return lost ? Refusal::ConnectionLost : Refusal::Other;
}

} // namespace

bool Status::has(ISC_STATUS code) const
{
    for (const ISC_STATUS *item = begin(); item < end() && *item != isc_arg_end;
         item += *item == isc_arg_cstring ? 3 : 2) {
        if (*item == isc_arg_gds && item[1] == code)
            return true;
    }
    return false;
}

QString Status::text() const
{
    QString text;
    char line[512];
    const ISC_STATUS *rest = vector_;
    while (failed() && fb_interpret(line, sizeof line, &rest) > 0)
        text += (text.isEmpty() ? QString() : u" - "_s) + QString::fromUtf8(line);
    return text;
}

void Status::require(const QString &context) const
{
    if (failed())
        throw DatabaseError(text(), context, refusalOf(*this));
}

} // namespace data::firebird
