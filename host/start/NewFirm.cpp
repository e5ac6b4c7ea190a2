#include "host/start/NewFirm.h"

#include "host/Application.h"
#include "host/DatabaseSetup.h"
#include "host/schema/DemoData.h"
#include "host/start/FirstRows.h"
#include "host/users/Users.h"
#include "platform/data/Connection.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace host {

namespace {

void insertCompany(const NewFirm &firm, data::Connection &connection)
{
    connection.run(u"INSERT INTO AZIENDA(RAGIONESOCIALE, INDIRIZZO, CAP, CITTA, PROVINCIA, NAZIONE, PARTITAIVA) "
                   "VALUES(?, ?, ?, ?, ?, ?, ?)"_s,
                   {firm.name, firm.address, firm.postcode, firm.town, firm.province, u"Italia"_s, firm.vatNumber});
}

// The new database has one user without a password, who becomes the firm's first one.
void nameFirstUser(const NewFirm &firm, data::Connection &connection)
{
    for (const QString &table : {u"UTENTI"_s, u"UTENTI_RUOLI"_s})
        connection.run(u"UPDATE %1 SET USER_NAME = ? WHERE USER_NAME = ?"_s.arg(table), {firm.userName, administrator});
    connection.run(u"UPDATE UTENTI SET NOME = ? WHERE USER_NAME = ?"_s, {firm.userName, firm.userName});
    setPassword(firm.userName, firm.password, connection);
}

} // namespace

void createFirm(const NewFirm &firm)
{
    createFilledDatabase(firm.database, [&firm](data::Connection &connection) {
        {
            data::Transaction transaction(connection);
            insertCompany(firm, connection);
            nameFirstUser(firm, connection);
            transaction.commit();
        }
        if (!firm.commonTables)
            return;
        insertCommonTables(connection);
        noteFirstRows(FirstRows::CommonTables, connection);
    });
}

QString proposedFileName(const QString &firmName)
{
    static const QRegularExpression unsuitable(u"[^a-z0-9]+"_s);
    QString name = firmName.normalized(QString::NormalizationForm_D).toLower();
    name.removeIf([](QChar character) { return character.isMark(); });
    name.replace(unsuitable, u" "_s);
    name = name.simplified().replace(u' ', u'-').left(60);
    return (name.isEmpty() ? u"azienda"_s : name) + u".fdb"_s;
}

} // namespace host
