#pragma once
#include "platform/data/ConnectionString.h"

#include <optional>

class QWidget;

namespace host {

/// A place on a server that is ready for a database to be made there.
struct ServerPlace
{
    data::DatabaseAddress database; ///< as the program's own user
    bool keepPassword = true;
};

/// Looks for a Firebird server, lets its administrator make the program's own user there, once, and tells what the
/// firewall needs. `fileName` is proposed for the database. Nothing when the user cancels.
std::optional<ServerPlace> askServerPlace(QWidget *owner, const QString &fileName);

} // namespace host
