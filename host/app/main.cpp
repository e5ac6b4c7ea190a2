#include "host/Application.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    return host::runApplication(application);
}
