#pragma once
#include "host/start/NewFirm.h"
#include "host/start/Opening.h"

#include <optional>

class QWidget;

namespace host {

class DatabaseMemory;

/// What to do when there is no database to open.
enum class FirstStart
{
    GiveUp,
    Again, ///< the database that was tried in vain
    Demo,
    NewFirm,
    Open
};

/// Asks; `tried` names a database that was tried in vain, if any.
FirstStart askFirstStart(const QString &tried = {});

/// Asks for a new firm's data and creates its database, by default in `folder`; nothing when the user cancels. Errors
/// are shown and keep the dialog open.
std::optional<NewFirm> askNewFirm(QWidget *owner, const QString &folder);
/// The same as a database to open, remembered at once: it must be found again whatever happens next.
std::optional<Opening> newFirmToOpen(QWidget *owner, const QString &folder, DatabaseMemory &memory);

/// Asks for a database, which is tried before it is accepted; nothing when the user cancels. `proposed` stands in the
/// inputs, files are looked for in `folder` at first.
std::optional<Opening> databaseToOpen(QWidget *owner, const QString &folder,
                                      const data::DatabaseAddress &proposed = {});

} // namespace host
