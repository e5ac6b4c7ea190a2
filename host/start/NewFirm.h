#pragma once
#include "platform/data/ConnectionString.h"

namespace host {

/// A firm that starts with a database of its own.
struct NewFirm
{
    data::DatabaseAddress database; ///< that does not exist yet
    bool keepPassword = false;      ///< of a server
    QString name;
    QString address;
    QString postcode;
    QString town;
    QString province;
    QString vatNumber;
    QString userName; ///< of the first user, who has full control
    QString password;
    bool commonTables = true; ///< VAT rates, units, payment types and so on as most firms have them
};

/// Creates the firm's database: the host's tables, the company's data, the first user in the administrator's place.
/// Nothing is left of it when it fails. Throws data::DatabaseError.
void createFirm(const NewFirm &firm);

/// A file name made from a firm's name: "Rossi & Figli S.r.l." gives "rossi-figli-s-r-l.fdb".
QString proposedFileName(const QString &firmName);

} // namespace host
