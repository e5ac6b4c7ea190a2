#pragma once
#include <QStringList>
#include <functional>

namespace data {
class Connection;
}

/// The upgrade script as data; Motore.h runs it.
namespace schema {

struct Passo
{
    QString oggetto;      ///< name in TABLE_VERSION: a table, or what else has a version
    QString daVersione;   ///< runs when the object is at exactly this version; empty: when the object is absent
    QStringList comandi;  ///< run in the step's transaction
    QString aVersione;    ///< version recorded in that transaction
    QStringList seguenti; ///< run one by one after the commit, because they need the table that the step created
    std::function<void(data::Connection &)> azione; ///< runs in the transaction, behind the commands
};

/// All steps in their order, which is part of the design: later ones depend on the versions that earlier ones leave.
const QList<Passo> &passi();

} // namespace schema
