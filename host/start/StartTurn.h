#pragma once
#include "platform/data/HeldRow.h"

namespace host {

/// The turn to start on a server's database: while it lives, no other workstation upgrades the host's tables or starts
/// its modules there. An embedded database has one program only, and needs none.
class StartTurn
{
public:
    /// Takes it, or waits for it behind a window that tells so. After waitLimits().turn the user is asked: to wait on,
    /// to go on without it, or to give up. When it was waited for, the database is looked at again. Throws core::Error
    /// when the user gives up or a newer program has upgraded the database meanwhile.
    explicit StartTurn(const data::DatabaseAddress &database);

private:
    std::unique_ptr<data::HeldRow> row_;
};

} // namespace host
