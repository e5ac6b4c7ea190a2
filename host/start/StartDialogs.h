#pragma once
#include "host/start/NewFirm.h"

#include <optional>

class QWidget;

namespace host {

/// What to do at the very first start.
enum class FirstStart
{
    GiveUp,
    Demo,
    NewFirm,
    Open
};

FirstStart askFirstStart();

/// Asks for a new firm's data and creates its database, by default in `folder`; nothing when the user cancels. Errors
/// are shown and keep the dialog open.
std::optional<NewFirm> askNewFirm(QWidget *owner, const QString &folder);

/// A database chosen to be opened.
struct ChosenDatabase
{
    data::DatabaseAddress address;
    bool keepPassword = false;
};

/// Asks for a database, which is tried before it is accepted; nothing when the user cancels.
std::optional<ChosenDatabase> askDatabase(QWidget *owner, const QString &folder);

} // namespace host
