#include "host/backup/Backup.h"
#include "platform/core/Error.h"
#include "platform/core/Sha256.h"
#include "platform/core/Translation.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr qsizetype keptBackups = 10;

// The file's name without its date.
QString stem(const QString &folder, const data::DatabaseAddress &database)
{
    const QFileInfo file(database.file);
    if (file.absolutePath() == QFileInfo(QDir::cleanPath(folder)).absolutePath())
        return file.completeBaseName();
    constexpr qsizetype markLength = 6;
    return file.completeBaseName() + u'-' + core::sha256Text(file.absoluteFilePath().toUtf8()).left(markLength);
}

// Sorted by name they are sorted by date.
QStringList backupsIn(const QString &folder, const QString &stem)
{
    const QRegularExpression name(u"^%1-\\d{4}-\\d\\d-\\d\\d\\.fbk$"_s.arg(QRegularExpression::escape(stem)));
    return QDir(folder).entryList(QDir::Files, QDir::Name).filter(name);
}

void removeOld(const QString &folder, const QString &stem)
{
    const QStringList backups = backupsIn(folder, stem);
    for (qsizetype i = 0; i < backups.size() - keptBackups; ++i)
        QFile::remove(folder + u'/' + backups[i]);
}

} // namespace

QString dailyBackupFile(const QString &folder, const data::DatabaseAddress &database, QDate day)
{
    return folder + u'/' + stem(folder, database) + u'-' + day.toString(Qt::ISODate) + u".fbk"_s;
}

bool dailyBackupDue(const QString &folder, const data::DatabaseAddress &database, QDate today)
{
    return database.isEmbedded() && !QFileInfo::exists(dailyBackupFile(folder, database, today));
}

QDate lastDailyBackup(const QString &folder, const data::DatabaseAddress &database)
{
    constexpr qsizetype dateLength = 10;
    const QStringList backups = backupsIn(folder, stem(folder, database));
    return backups.isEmpty()
               ? QDate()
               : QDate::fromString(QFileInfo(backups.last()).completeBaseName().right(dateLength), Qt::ISODate);
}

void runDailyBackup(const QString &folder, const data::DatabaseAddress &database, QDate today, core::Progress &progress)
{
    if (!QDir().mkpath(folder))
        throw core::Error(core::tr("La cartella \"%1\" non si può creare.").arg(folder));
    backupDatabase(database, dailyBackupFile(folder, database, today), progress);
    removeOld(folder, stem(folder, database));
}

} // namespace host
