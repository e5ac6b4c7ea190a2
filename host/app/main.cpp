#include "host/Application.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    host::choosePlatform(argc, argv);
    QApplication application(argc, argv);
    return host::runApplication(application);
}
