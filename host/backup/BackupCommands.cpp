#include "host/backup/BackupCommands.h"

#include "host/backup/Backup.h"
#include "platform/core/Clock.h"
#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/ProgressDialog.h"

#include <QFileInfo>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace host {

QString chooseBackupFile(QWidget *owner, const data::DatabaseAddress &database)
{
    const QString name = QFileInfo(database.file).completeBaseName();
    return ui::chooseSaveFile(owner, {.title = core::tr("Copia di sicurezza"),
                                      .filter = core::tr("Copie di sicurezza (*.fbk)"),
                                      .defaultExtension = u"fbk"_s,
                                      .proposedName = u"%1-%2.fbk"_s.arg(name, core::today().toString(Qt::ISODate))});
}

bool makeBackup(QWidget *owner, const data::DatabaseAddress &database, const QString &file,
                const std::function<void()> &ended)
{
    bool done = false;
    core::guarded(owner, [&] {
        {
            const auto end = qScopeGuard(ended);
            done = ui::runWithProgress(owner, core::tr("Copia di sicurezza"),
                                       [&](core::Progress &progress) { backupDatabase(database, file, progress); });
        }
        if (done)
            core::inform(owner, core::tr("La copia di sicurezza è stata fatta e verificata:\n\r%1").arg(file));
    });
    return done;
}

QString chooseRestoreFile(QWidget *owner)
{
    return ui::chooseOpenFile(owner, {.title = core::tr("Scegli la copia da ripristinare"),
                                      .filter = core::tr("Copie di sicurezza (*.fbk);;Tutti i file (*)")});
}

bool restoreBackup(QWidget *owner, const QString &file, const data::DatabaseAddress &target)
{
    bool done = false;
    core::guarded(owner, [&] {
        QString kept;
        done = ui::runWithProgress(owner, core::tr("Ripristino"),
                                   [&](core::Progress &progress) { kept = restoreDatabase(file, target, progress); });
        if (!done)
            return;
        const QString before =
            kept.isEmpty() ? QString() : core::tr("\n\rIl database precedente è conservato in:\n\r") + kept;
        core::inform(owner, core::tr("La copia è stata ripristinata e verificata.") + before);
    });
    return done;
}

void backupAtExit(QWidget *owner, const QString &folder, const data::DatabaseAddress &database)
{
    if (!dailyBackupDue(folder, database, core::today()))
        return;
    try {
        ui::runWithProgress(owner, core::tr("Copia di sicurezza giornaliera"), [&](core::Progress &progress) {
            runDailyBackup(folder, database, core::today(), progress);
        });
    } catch (const std::exception &error) {
        core::logError(u"copia giornaliera"_s, error);
        core::warn(owner, core::tr("La copia di sicurezza giornaliera non è riuscita:\n\r") + core::errorText(error));
    }
}

} // namespace host
