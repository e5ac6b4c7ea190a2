#pragma once
#include "platform/data/Connection.h"

#include <QList>
#include <QPointer>
#include <QWidget>

namespace host {

/// Closes every open database connection of the main window and of the modules, so that another program can open an
/// embedded database. Forms stay as they are; nothing may be read or written until reopen().
class ClosedConnections
{
public:
    /// Closes those that are open and remembers them.
    explicit ClosedConnections(const QWidget &mainWindow);

    /// Opens those that are still closed. Throws data::DatabaseError; it may be tried again.
    void reopen();

private:
    QList<QPointer<data::Connection>> connections_;
};

} // namespace host
