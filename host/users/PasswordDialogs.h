#pragma once
#include "platform/data/Connection.h"

#include <QString>
#include <optional>

class QWidget;

namespace host {

/// Shortest password that is accepted, in characters.
constexpr int shortestPassword = 6;

/// What is wrong with a new password and its repetition, in a sentence; empty when nothing is.
QString passwordProblem(const QString &password, const QString &repeated);

/// Asks twice for a new password; nothing when the user cancels.
std::optional<QString> askNewPassword(QWidget *owner);

/// Lets the current user change the password, the old one asked first.
void changeOwnPassword(QWidget *owner, data::Connection &connection);

/// How a login ended.
struct Login
{
    QString user;           ///< as stored; empty without one
    bool lockedOut = false; ///< three wrong passwords, and not just given up
};

/// The login: `proposed` stands in the name's box, or the first user where that one may not log in. Three wrong
/// passwords are told. Throws data::DatabaseError.
Login logIn(QWidget *owner, const QString &proposed, data::Connection &connection);

} // namespace host
