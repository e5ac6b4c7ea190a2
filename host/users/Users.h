#pragma once
#include "platform/data/Connection.h"

#include <QStringList>

class QObject;

/// Users, their roles and the rights of the roles, from the tables UTENTI, RUOLI_UTENTE and ABILITAZIONI_*. What asks
/// the database throws data::DatabaseError.
namespace host {

/// The right that includes all others.
inline const QString fullControl = QStringLiteral("Controllo completo");

/// What is said where a right is missing.
inline const QString missingRight =
    QStringLiteral("Non si dispone di diritti sufficienti per eseguire questa operazione.");
/// Shows `missingRight` titled "Attenzione".
void refuseForRights(QObject *owner);

/// Names of the users who may log in, in alphabetical order.
QStringList activeUsers(data::Connection &connection);

/// Those of them who have no password, as in the demonstration data.
QStringList usersWithoutPassword(data::Connection &connection);

/// The user's name as it is stored when name and password are right and the user is active; empty otherwise. A user
/// without a password logs in with an empty one.
QString authenticate(const QString &userName, const QString &password, data::Connection &connection);

/// Stores a new password, salted and hashed. Nothing happens for an unknown user.
void setPassword(const QString &userName, const QString &password, data::Connection &connection);

/// True when one of the user's roles grants `right` (compared exactly) or full control. The name is compared without
/// case.
bool userHasRight(const QString &userName, const QString &right, data::Connection &connection);

/// True when the current user has full control and is active: both can be taken away while windows are open.
bool currentUserInControl(data::Connection &connection);

/// How many active users have full control, those aside who are named `exceptUser` and what comes from `exceptRole`
/// (empty and 0 leave nobody aside).
int administratorsExcept(const QString &exceptUser, int exceptRole, data::Connection &connection);

/// True when one of the roles grants full control.
bool rolesGrantFullControl(const QList<int> &roles, data::Connection &connection);

} // namespace host
