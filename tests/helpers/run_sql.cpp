// Another workstation: runs the statements given as arguments after the database's address, each committed by itself.
// The password comes in ISC_PASSWORD.
#include "platform/data/Connection.h"
#include "platform/data/ConnectionString.h"

#include <QCoreApplication>
#include <QTextStream>

#include <unistd.h>

int main(int argc, char **argv)
{
    constexpr unsigned timeLimit = 20; // seconds
    alarm(timeLimit);
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    data::DatabaseAddress address = data::DatabaseAddress::parse(arguments.value(1));
    address.password = qEnvironmentVariable("ISC_PASSWORD");
    try {
        data::Connection connection(data::nativeConnectionString(address));
        for (const QString &sql : arguments.mid(2))
            connection.execute(sql);
        return 0;
    } catch (const std::exception &error) {
        QTextStream(stderr) << error.what() << '\n';
        return 1;
    }
}
