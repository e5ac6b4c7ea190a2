// Opens the database named by the first argument, says so on standard output and keeps it until its standard input
// ends: the other process that the tests need.
#include "platform/data/Connection.h"
#include "platform/data/ConnectionString.h"

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    data::DatabaseAddress address;
    address.file = QCoreApplication::arguments().value(1);
    try {
        data::Connection connection(data::nativeConnectionString(address));
        QTextStream(stdout) << "open\n";
        QTextStream(stdin).readAll();
        return 0;
    } catch (const std::exception &error) {
        QTextStream(stderr) << error.what() << '\n';
        return 1;
    }
}
