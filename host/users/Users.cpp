#include "host/users/Users.h"

#include "host/Corvane3Impl.h"
#include "host/users/Password.h"
#include "platform/core/Format.h"
#include "platform/core/Messages.h"
#include "platform/data/DataSet.h"
#include "platform/data/Latest.h"
#include "platform/data/SqlText.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

data::Rows userRow(const QString &userName, data::Connection &connection)
{
    return data::latest(connection, u"SELECT * FROM UTENTI WHERE UPPER(USER_NAME) = "_s + data::inCapitals(),
                        {data::searchedText(userName.trimmed())});
}

QStringList userNames(const QString &condition, data::Connection &connection)
{
    const data::Rows rows =
        data::latest(connection, u"SELECT USER_NAME FROM UTENTI WHERE %1 ORDER BY UPPER(USER_NAME)"_s.arg(condition));
    QStringList names;
    for (qsizetype row = 0; row < rows.size(); ++row)
        names.append(rows.text(row, u"USER_NAME"));
    return names;
}

} // namespace

void refuseForRights(QObject *owner)
{
    core::warn(owner, missingRight);
}

QStringList activeUsers(data::Connection &connection)
{
    return userNames(u"ATTIVO = 'True'"_s, connection);
}

QStringList usersWithoutPassword(data::Connection &connection)
{
    return userNames(u"ATTIVO = 'True' AND COALESCE(PASSWORD_HASH, '') = ''"_s, connection);
}

QString authenticate(const QString &userName, const QString &password, data::Connection &connection)
{
    const data::Rows rows = userRow(userName, connection);
    if (rows.isEmpty() || !core::parseFlag(rows.text(0, u"ATTIVO")).value_or(false))
        return {};
    const QString hash = rows.text(0, u"PASSWORD_HASH");
    const bool right = hash.isEmpty() ? password.isEmpty() : passwordMatches(password, hash);
    return right ? rows.text(0, u"USER_NAME") : QString();
}

void setPassword(const QString &userName, const QString &password, data::Connection &connection)
{
    connection.run(u"UPDATE UTENTI SET PASSWORD_HASH = ? WHERE UPPER(USER_NAME) = "_s + data::inCapitals(),
                   {passwordHash(password), data::searchedText(userName)});
}

bool userHasRight(const QString &userName, const QString &right, data::Connection &connection)
{
    data::DataSet rights(&connection);
    rights.setCommandText(
        u"SELECT ABILITAZIONI_UTENTE.* FROM UTENTI_RUOLI LEFT JOIN ABILITAZIONI_RUOLI ON "
        "ABILITAZIONI_RUOLI.IDRUOLO_UTENTE = UTENTI_RUOLI.IDRUOLO_UTENTE LEFT JOIN ABILITAZIONI_UTENTE ON "
        "ABILITAZIONI_UTENTE.IDABILITAZIONE_UTENTE = ABILITAZIONI_RUOLI.IDABILITAZIONE_UTENTE WHERE "
        "UPPER(UTENTI_RUOLI.USER_NAME) = "_s +
        data::inCapitals(u":UTENTE"_s));
    const data::LatestRows wanted;
    rights.setParameter(u"UTENTE"_s, data::searchedText(userName));
    rights.open();
    // Not in the statement, which would not tell blanks at the end.
    const QString column = u"ABILITAZIONE_UTENTE"_s;
    return rights.locate(column, fullControl) || rights.locate(column, right);
}

bool currentUserInControl(data::Connection &connection)
{
    const QString user = GetKxCurrentUserName();
    return activeUsers(connection).contains(user, Qt::CaseInsensitive) && userHasRight(user, fullControl, connection);
}

int administratorsExcept(const QString &exceptUser, int exceptRole, data::Connection &connection)
{
    return connection
        .select(u"SELECT COUNT(DISTINCT U.IDUTENTE) AS NUM FROM UTENTI U JOIN UTENTI_RUOLI UR ON "
                "UPPER(UR.USER_NAME) = UPPER(U.USER_NAME) JOIN ABILITAZIONI_RUOLI AR ON AR.IDRUOLO_UTENTE = "
                "UR.IDRUOLO_UTENTE JOIN ABILITAZIONI_UTENTE A ON A.IDABILITAZIONE_UTENTE = AR.IDABILITAZIONE_UTENTE "
                "WHERE A.ABILITAZIONE_UTENTE = :COMPLETO AND U.ATTIVO = 'True' AND UR.IDRUOLO_UTENTE <> :RUOLO AND "
                "UPPER(U.USER_NAME) IS DISTINCT FROM "_s +
                    data::inCapitals(u":UTENTE"_s),
                {{u"COMPLETO"_s, fullControl}, {u"RUOLO"_s, exceptRole}, {u"UTENTE"_s, data::searchedText(exceptUser)}})
        .integer(0, u"NUM");
}

bool rolesGrantFullControl(const QList<int> &roles, data::Connection &connection)
{
    return std::any_of(roles.begin(), roles.end(), [&connection](int role) {
        return connection.finds(u"SELECT FIRST 1 1 AS NUM FROM ABILITAZIONI_RUOLI AR JOIN ABILITAZIONI_UTENTE A ON "
                                "A.IDABILITAZIONE_UTENTE = AR.IDABILITAZIONE_UTENTE WHERE AR.IDRUOLO_UTENTE = ? AND "
                                "A.ABILITAZIONE_UTENTE = ?"_s,
                                {role, fullControl});
    });
}

} // namespace host
