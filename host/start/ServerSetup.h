#pragma once
#include "platform/data/ConnectionString.h"

/// What a Firebird server needs before several workstations share a database on it.
namespace host {

/// The program's own user on a server, who owns the databases that it makes there: it alters their tables and backs
/// them up, and needs the server's administrator for neither.
inline const QString serverUser = QStringLiteral("CORVANE");

/// Does a Firebird server answer on `machine` at `port`? Takes some seconds where nothing does.
bool serverAnswers(const QString &machine, int port);

/// A password that nobody guesses: 16 letters and digits.
QString newServerPassword();

/// Does the server let in the user of `target` with that password? The database need not exist.
bool knowsUser(const data::DatabaseAddress &target);

/// Makes the user of `target` with its password and lets it create databases, as the server's administrator, whose
/// password is used for nothing else. Throws core::Error: for a refused password, for a user who is there with another
/// one, and where the server cannot write to the folder of `target`.
void prepareServer(const data::DatabaseAddress &target, const QString &administratorPassword);

/// What has to be opened in that machine's firewall, in words.
QString firewallAdvice(const QString &machine, int port);

} // namespace host
