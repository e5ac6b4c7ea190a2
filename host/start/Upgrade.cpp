#include "host/start/Upgrade.h"

#include "host/IntfPack.h"
#include "host/PackageLoader.h"
#include "host/backup/UpgradeCopy.h"
#include "host/start/StartTurn.h"
#include "platform/data/Connection.h"
#include "platform/schema/Engine.h"
#include "platform/ui/Dialogs.h"

#include <QCoreApplication>

namespace host {

namespace {

struct Upgrade
{
    bool ofHost = false;
    bool ofModules = false;
    QMap<QString, QString> versions;
};

bool isUpgradeOfModulesDue(data::Connection &connection)
{
    for (int i = 0; i < GetPackageCount(); ++i) {
        const auto &steps = GetPackage(i).moduleClass.steps;
        if (steps && schema::isUpgradeDue(connection, steps()))
            return true;
    }
    return false;
}

Upgrade upgradeDue(const data::DatabaseAddress &address, const QList<schema::Step> &steps)
{
    data::Connection connection(data::nativeConnectionString(address));
    recogniseHostSchema(connection);
    return {.ofHost = schema::isUpgradeDue(connection, steps),
            .ofModules = isUpgradeOfModulesDue(connection),
            .versions = schema::recordedVersions(connection)};
}

} // namespace

void upgradeHost(const data::DatabaseAddress &address, const QList<schema::Step> &steps)
{
    loadPackages(QCoreApplication::applicationDirPath());
    const StartTurn turn(address);
    const ui::WaitCursor wait;
    const Upgrade due = upgradeDue(address, steps);
    if (address.isEmbedded() && (due.ofHost || due.ofModules))
        copyBeforeUpgrade(address, due.versions);
    if (!due.ofHost)
        return;
    data::Connection connection(data::nativeConnectionString(address));
    upgradeHostSchema(connection, steps);
}

} // namespace host
