#pragma once
#include <QString>
#include <optional>

class QWidget;
namespace data {
class Connection;
}

namespace host {

/// Shortest password that is accepted, in characters.
constexpr int shortestPassword = 6;

/// What is wrong with a new password and its repetition, in a sentence; empty when nothing is.
QString passwordProblem(const QString &password, const QString &repeated);

/// Asks twice for a new password; nothing when the user cancels.
std::optional<QString> askNewPassword(QWidget *owner);

/// Lets the current user change the password, the old one asked first.
void changeOwnPassword(QWidget *owner, data::Connection &connection);

/// The login: `proposed` stands in the name's box. Returns the name of the user, empty when the user gave up or after
/// three wrong passwords, which is told.
QString logIn(QWidget *owner, const QString &proposed, data::Connection &connection);

} // namespace host
