// The guided tour: corvane_tour [--dark] FOLDER, or corvane --tour FOLDER, which starts it.
#include "host/Application.h"
#include "platform/ui/Icons.h"
#include "platform/ui/Look.h"
#include "tour/Tour.h"

#include <QApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    host::prepareProgram(application);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.removeAll(u"--dark"_s) > 0) {
        ui::Look::useOwnColours(ui::Scheme::Dark);
        ui::useIconTheme();
    }
    if (arguments.size() != 1) {
        std::fprintf(stderr, "corvane_tour [--dark] FOLDER\n");
        return 2;
    }
    return tour::runTour(arguments.first()) ? 0 : 1;
}
