#include "host/start/SelfCheck.h"

#include "host/Application.h"
#include "host/DatabaseSetup.h"
#include "host/IntfPack.h"
#include "host/PackageLoader.h"
#include "host/help/ManualWindow.h"
#include "host/start/Upgrade.h"
#include "host/ui/MainWindow.h"
#include "platform/core/Error.h"
#include "platform/core/Translation.h"
#include "platform/ui/ResultGrid.h"

#include <QImageReader>
#include <QMenu>
#include <QMenuBar>
#include <QStandardPaths>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace host {

namespace {

void require(bool there, const QString &what)
{
    if (!there)
        throw core::Error(core::tr("Installazione incompleta: %1.").arg(what));
    std::printf("ok  %s\n", qUtf8Printable(what));
}

data::DatabaseAddress demoIn(const QString &folder)
{
    data::DatabaseAddress address;
    address.file = folder + u"/corvane.fdb"_s;
    createHostDatabase(address, true);
    requireDatabase(address);
    upgradeHost(address);
    return address;
}

// A module that could not work would have shown a message: those count as failures, too.
void checkSession(const data::DatabaseAddress &address)
{
    Session session(address, administrator, {});
    startModules();
    require(GetPackageCount() > 0, core::tr("moduli (Magazzino.bpl)"));
    session.window().show();
    QMenu *documents = session.window().menuBar()->findChild<QMenu *>(u"mnDocumenti"_s);
    require(documents && !documents->actions().isEmpty(), core::tr("comandi del modulo"));
    for (QAction *command : documents->actions())
        command->trigger();
    require(!session.window().findChildren<ui::ResultGrid *>().isEmpty(), core::tr("elenchi dei documenti"));
}

} // namespace

void checkInstallation(const QString &folder)
{
    const data::DatabaseAddress address = demoIn(folder);
    require(true, core::tr("motore del database, archivio dimostrativo"));
    checkSession(address);
    require(!manualFolder().isEmpty(), u"manuale"_s);
    require(QImageReader::supportedImageFormats().contains("svg"), core::tr("icone (SVG)"));
    require(!QStandardPaths::findExecutable(u"gbak"_s).isEmpty(), core::tr("copie di sicurezza (gbak)"));
}

} // namespace host
