#pragma once
#include "platform/data/Connection.h"
#include "platform/data/DataSet.h"
#include "platform/data/Rows.h"

#include <QHash>
#include <QObject>

/// The print data module: the read-only queries whose rows the reports print, each published under the name of its
/// report data connection.
class TMMGdmStampe : public QObject
{
    Q_OBJECT

public:
    /// The queries over `connection`, none open.
    TMMGdmStampe(data::Connection *connection, QObject *parent);

    /// A query by its name ("adsAzienda"). Throws core::Error for another name.
    data::DataSet &query(const QString &name) const;
    /// The query behind a report data connection ("MMGdsAzienda"). Throws core::Error for another name.
    data::DataSet &dataConnection(const QString &name) const;

    /// The rows of a report data connection: of the query behind it, or those given for it.
    data::Rows rows(const QString &name) const;
    /// What a report data connection shows from now on, whether there is a query behind it or not.
    void setRows(const QString &name, const data::Rows &rows) { given_[name] = rows; }

private:
    QHash<QString, data::Rows> given_;
};
