#pragma once
#include <QObject>

namespace data {
class Connection;
class DataSet;
} // namespace data

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
};
