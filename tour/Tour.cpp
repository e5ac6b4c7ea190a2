#include "tour/Tour.h"

#include "host/Application.h"
#include "host/DatabaseSetup.h"
#include "host/PackageLoader.h"
#include "host/start/FirstRows.h"
#include "host/ui/MainWindow.h"
#include "platform/core/Error.h"
#include "platform/data/Connection.h"
#include "tour/TourElectronic.h"
#include "tour/TourFirm.h"
#include "tour/TourHost.h"
#include "tour/TourInvoices.h"
#include "tour/TourKeys.h"
#include "tour/TourWarehouse.h"
#include "tour/Visit.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace tour {

namespace {

data::DatabaseAddress demoDatabase(const QString &file)
{
    QFile::remove(file);
    data::DatabaseAddress address;
    address.file = file;
    host::createHostDatabase(address, true);
    return address;
}

void show(Visit &visit)
{
    tourFirm(visit);
    const QString file = visit.file(u"demo.fdb"_s);
    visit.tell(u"Nuovo database dimostrativo \"%1\""_s.arg(file));
    host::Session session(demoDatabase(file), host::administrator, {});
    host::startModules();
    host::insertDemoModuleData(session.connection());
    visit.show(session.window());
    tourWarehouse(visit, session);
    tourHost(visit, session);
    tourInvoices(visit, session);
    tourElectronic(visit, session);
    tourKeys(visit, session);
    session.window().close();
}

} // namespace

bool runTour(const QString &folder)
{
    Visit visit(folder);
    try {
        if (!QDir().mkpath(folder))
            throw core::Error(u"Impossibile creare la cartella \"%1\"."_s.arg(folder));
        show(visit);
    } catch (const std::exception &error) {
        visit.fail(core::errorText(error));
    }
    return visit.finish();
}

} // namespace tour
