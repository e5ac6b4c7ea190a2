#include "host/backup/BackupCommands.h"

#include "host/backup/Backup.h"
#include "platform/core/Clock.h"
#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/core/Messages.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/ProgressDialog.h"

#include <QFileInfo>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace host {

QString chooseBackupFile(QWidget *owner, const data::DatabaseAddress &database)
{
    const QString name = QFileInfo(database.file).completeBaseName();
    return ui::chooseSaveFile(owner, {.title = u"Copia di sicurezza"_s,
                                      .filter = u"Copie di sicurezza (*.fbk)"_s,
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
            done = ui::runWithProgress(owner, u"Copia di sicurezza"_s,
                                       [&](core::Progress &progress) { backupDatabase(database, file, progress); });
        }
        if (done)
            core::inform(owner, u"La copia di sicurezza è stata fatta e verificata:\n\r%1"_s.arg(file));
    });
    return done;
}

QString chooseRestoreFile(QWidget *owner)
{
    return ui::chooseOpenFile(owner, {.title = u"Scegli la copia da ripristinare"_s,
                                      .filter = u"Copie di sicurezza (*.fbk);;Tutti i file (*)"_s});
}

bool restoreBackup(QWidget *owner, const QString &file, const data::DatabaseAddress &target)
{
    bool done = false;
    core::guarded(owner, [&] {
        QString kept;
        done = ui::runWithProgress(owner, u"Ripristino"_s,
                                   [&](core::Progress &progress) { kept = restoreDatabase(file, target, progress); });
        if (!done)
            return;
        const QString before = kept.isEmpty() ? QString() : u"\n\rIl database precedente è conservato in:\n\r"_s + kept;
        core::inform(owner, u"La copia è stata ripristinata e verificata."_s + before);
    });
    return done;
}

void backupAtExit(QWidget *owner, const QString &folder, const data::DatabaseAddress &database)
{
    if (!dailyBackupDue(folder, database, core::today()))
        return;
    try {
        ui::runWithProgress(owner, u"Copia di sicurezza giornaliera"_s, [&](core::Progress &progress) {
            runDailyBackup(folder, database, core::today(), progress);
        });
    } catch (const std::exception &error) {
        core::logError(u"copia giornaliera"_s, error);
        core::warn(owner, u"La copia di sicurezza giornaliera non è riuscita:\n\r"_s + core::errorText(error));
    }
}

} // namespace host
