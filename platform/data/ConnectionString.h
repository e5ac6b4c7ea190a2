#pragma once
#include <QMap>
#include <QString>

namespace data {

/// Where a database is and how to log in.
struct DatabaseAddress
{
    QString host; ///< empty for the embedded engine
    int port = 0; ///< 0 for the server's default port
    QString file; ///< path as the engine (embedded: this process; server: that machine) sees it, or a server alias
    QString user = QStringLiteral("SYSDBA");
    QString password;

    /// Is it a file that the engine inside this program opens?
    bool isEmbedded() const { return host.isEmpty(); }
    /// "HOST[/PORT]:FILE" or the plain file path, as the command line writes it; no user, no password.
    QString toString() const;
    /// The reverse of toString(). A text whose part before a colon holds a path separator other than one port is a
    /// plain file.
    static DatabaseAddress parse(const QString &text);
};

/// What a connection string means to the driver layer.
struct DriverSettings
{
    bool isOdbc = false;     ///< else the database's own client library
    DatabaseAddress address; ///< of an ODBC data source only user and password
    QString dataSourceName;  ///< ODBC only
};

/// "Key=Value;" pairs; keys are compared without case, values may stand in double or single quotes.
QMap<QString, QString> parseConnectionString(const QString &text);

/// The connection string of the native provider for `address`.
QString nativeConnectionString(const DatabaseAddress &address);

/// Maps a connection string to a driver: provider "MSDASQL.1" goes to ODBC with its data source name, provider
/// "Firebird" to the client library. Throws core::Error for any other provider.
DriverSettings driverSettings(const QString &connectionString);

} // namespace data
