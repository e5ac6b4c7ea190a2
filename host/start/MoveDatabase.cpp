#include "host/start/MoveDatabase.h"

#include "host/DatabaseSetup.h"
#include "host/backup/Backup.h"
#include "host/backup/Contents.h"
#include "host/backup/Gbak.h"
#include "platform/core/Error.h"
#include "platform/core/Messages.h"
#include "platform/core/Progress.h"
#include "platform/core/Translation.h"
#include "platform/data/DatabaseFile.h"
#include "platform/ui/ProgressDialog.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

const QString moving = u"spostamento dell'archivio"_s; // in the log

void requireSame(const data::DatabaseAddress &from, const data::DatabaseAddress &to, core::Progress &progress)
{
    requireDatabase(to);
    progress.setText(core::tr("Confronto con l'archivio di prima…"));
    const QStringList different = differingTables(from, to, progress);
    if (!different.isEmpty())
        throw core::Error(core::tr("Nell'archivio di prima si è ancora lavorato dopo la copia: lo spostamento va "
                                   "ripetuto quando nessuno lo usa (tabelle: %1).")
                              .arg(different.join(u", "_s)));
}

// Rows can be there and yet be unreadable through an index or at the next change: the engine looks itself.
void makeVerified(const QString &file, const data::DatabaseAddress &from, const data::DatabaseAddress &to,
                  core::Progress &progress)
{
    restoreDatabase(file, to, progress);
    try {
        progress.setText(core::tr("Verifica dell'archivio spostato…"));
        validateDatabase(to, progress);
        requireSame(from, to, progress);
    } catch (...) {
        data::dropQuietly(to, moving);
        throw;
    }
}

QString movedText(const data::DatabaseAddress &from, const data::DatabaseAddress &to)
{
    const QString others =
        to.isEmbedded() ? QString() : core::tr("\n\rLe altre postazioni lo aprono con File, Apri archivio.");
    return core::tr("L'archivio è stato spostato in\n\r%1\n\re verificato, tabella per tabella. Quello di prima resta "
                    "in\n\r%2\n\re non va più usato.")
               .arg(to.toString(), from.toString()) +
           others;
}

} // namespace

QStringList differingTables(const data::DatabaseAddress &from, const data::DatabaseAddress &to,
                            core::Progress &progress)
{
    const QMap<QString, QString> before = tableContents(from, progress);
    const QMap<QString, QString> after = tableContents(to, progress);
    QStringList different;
    for (auto table = before.begin(); table != before.end(); ++table) {
        if (after.value(table.key()) != *table)
            different.append(table.key());
    }
    for (auto table = after.begin(); table != after.end(); ++table) {
        if (!before.contains(table.key()))
            different.append(table.key());
    }
    return different;
}

bool finishMove(QWidget *owner, const QString &file, const data::DatabaseAddress &from, const data::DatabaseAddress &to)
{
    bool done = false;
    core::guarded(owner, [&] {
        done = ui::runWithProgress(owner, core::tr("Spostamento dell'archivio"),
                                   [&](core::Progress &progress) { makeVerified(file, from, to, progress); });
        if (done)
            core::inform(owner, movedText(from, to));
    });
    return done;
}

} // namespace host
