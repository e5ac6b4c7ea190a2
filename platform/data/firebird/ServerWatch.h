#pragma once
#include "platform/data/ConnectionString.h"

#include <ibase.h>

namespace data::firebird {

/// A call of the client library that may wait for a server. While it lives, a thread looks after it: a server that has
/// been silent for waitLimits().silence is asked by a second connection, and when that gets no answer either, the
/// call's connection is broken, which lets the call return with an error. A server that answers may work as long as it
/// needs.
class WatchedCall
{
public:
    WatchedCall(const DatabaseAddress &address, isc_db_handle *handle);
    ~WatchedCall();
    WatchedCall(const WatchedCall &) = delete;
    WatchedCall &operator=(const WatchedCall &) = delete;

private:
    quint64 number_ = 0; ///< 0 for the embedded engine, which is this process
};

} // namespace data::firebird
