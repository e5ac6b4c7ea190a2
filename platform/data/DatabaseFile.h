#pragma once
#include "platform/data/ConnectionString.h"

namespace data {

/// Why a database cannot be opened.
enum class OpenFailure
{
    None,
    Missing,
    InUse,
    NotADatabase,
    Refused,
    Unreachable,
    NoPermission, ///< the account may not read or write the file
    Other
};

struct OpenCheck
{
    OpenFailure failure = OpenFailure::None;
    QString databaseText; ///< the engine's own words, for the log
};

/// Tries to attach to the database and lets go of it again.
OpenCheck checkDatabase(const DatabaseAddress &address);

/// Creates an empty database: page size 8192, dialect 3, character set UTF8. An embedded one's path must have no colon
/// (see engineFolder()). Throws DatabaseError, also when the file exists.
void createDatabase(const DatabaseAddress &address);

/// Removes a database with its file; does nothing when it cannot be opened. Throws DatabaseError when it is in use.
void dropDatabase(const DatabaseAddress &address);

/// The same where another error is what counts: this one goes to the log alone, under `where`. For some seconds it
/// tries again: a server works on for a moment for a program that was killed, whose database is in use as long.
void dropQuietly(const DatabaseAddress &address, const QString &where);

/// Runs one command text, such as CREATE INDEX, over an attachment of its own, in a transaction that never waits:
/// beside another one that holds what it needs it fails at once, where a Connection would wait without limit. Throws
/// DatabaseError and leaves nothing behind then.
void executeWithoutWaiting(const DatabaseAddress &address, const QString &sql);

/// The client library's own name and version, "LI-V3.0.11.33703 Firebird 3.0".
QString clientVersion();

/// Gives the embedded engine a lock folder of the user's own (created when missing); call it before the first connect.
/// The engine's default in the shared temporary folder belongs to whichever account came first. When another account,
/// such as root with this user's home, has taken `path`, a folder beside it named after the user serves instead, and
/// where that is not possible one in the temporary folder that is this account's own. Where there is no place for any,
/// the engine's default stays.
void useLockFolder(const QString &path);

} // namespace data
