#pragma once
#include "platform/data/ConnectionString.h"

#include <QProcess>
#include <QTemporaryDir>

namespace test {

/// A database server of the test's own on a free local port, with its own configuration, users and folder. It works
/// from any account and ends with the object, also when the test program is killed. Errors throw core::Error.
class FirebirdServer
{
public:
    FirebirdServer();
    ~FirebirdServer();
    Q_DISABLE_COPY(FirebirdServer)

    /// Of the database file `name` in the server's folder, with the right password.
    data::DatabaseAddress address(const QString &name = QStringLiteral("test.fdb")) const;
    QString folder() const { return folder_.path(); }

    /// Starts it (again, on the same port) and returns when it answers.
    void start();
    /// Ends it in the middle of whatever it does, as a power failure would.
    void crash();
    /// It takes connections and answers nothing more, as a machine that hangs, until goOn().
    void hang() const;
    void goOn() const;

private:
    void writeConfiguration();
    void createSecurityDatabase();
    QProcessEnvironment environment() const;

    QTemporaryDir folder_;
    int port_ = 0;
    QProcess process_;
};

} // namespace test
