// The guided tour: corvane_tour FOLDER, or corvane --tour FOLDER, which starts it.
#include "host/Application.h"
#include "tour/Tour.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    host::prepareProgram(application);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        std::fprintf(stderr, "corvane_tour FOLDER\n");
        return 2;
    }
    return tour::runTour(arguments.at(1)) ? 0 : 1;
}
