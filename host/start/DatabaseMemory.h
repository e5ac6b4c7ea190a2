#pragma once
#include "platform/data/ConnectionString.h"

#include <QStringList>

#include <optional>

namespace host {

/// What the program remembers between two starts: the database opened last, those before it, the user who logged in
/// last, and the passwords of servers.
///
/// Passwords lie in the desktop's keyring. Where there is none they lie in a file of their own that only its owner may
/// read, not encrypted: who can read the file could read a key beside it as well.
class DatabaseMemory
{
public:
    /// Keeps everything in `folder`: "corvane.ini" and "accessi.ini".
    explicit DatabaseMemory(const QString &folder);

    /// The path of "corvane.ini".
    QString settingsFile() const;

    /// The database opened last, with its user and, as far as it is kept, its password; nothing before the first one.
    std::optional<data::DatabaseAddress> last() const;
    /// Databases opened before, the latest first, `last()` included; without passwords, which withPassword() adds.
    QList<data::DatabaseAddress> recent() const;
    /// `database` with its password, where that is kept. A keyring may take some seconds.
    data::DatabaseAddress withPassword(const data::DatabaseAddress &database) const;
    /// Puts `database` in front. Its password is kept only with `keepPassword`; without it a kept one is forgotten.
    /// This and what else changes something throws core::Error when it cannot be written; what was remembered before
    /// stays then.
    void remember(const data::DatabaseAddress &database, bool keepPassword);
    /// Drops a database and its password.
    void forget(const data::DatabaseAddress &database);
    /// True when the password of `database` is kept.
    bool keepsPassword(const data::DatabaseAddress &database) const;

    /// Who logged in last; empty before the first login.
    QString lastUser() const;
    /// Keeps the name for the next login.
    void rememberUser(const QString &userName) const;

private:
    QString passwordFile() const;
    QStringList entries() const;

    QString folder_;
};

} // namespace host
