#include "host/backup/UpgradeCopy.h"

#include "platform/core/Clock.h"
#include "platform/core/Error.h"
#include "platform/core/SaveFile.h"
#include "platform/core/Sha256.h"
#include "platform/core/Translation.h"
#include "platform/core/WorkFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr qsizetype keptCopies = 3;

QString markOf(const QMap<QString, QString> &versions)
{
    QString all;
    for (auto it = versions.begin(); it != versions.end(); ++it)
        all += it.key() + u'=' + it.value() + u'\n';
    constexpr qsizetype markLength = 6;
    return core::sha256Text(all.toUtf8()).left(markLength);
}

// Sorted by name they are sorted by date.
QStringList copiesOf(const QDir &folder, const QString &stem)
{
    static const QString pattern = u"^%1\\d{8}-\\d{6}-[0-9a-f]{6}\\.fdb$"_s;
    return folder.entryList(QDir::Files, QDir::Name)
        .filter(QRegularExpression(pattern.arg(QRegularExpression::escape(stem))));
}

void removeOld(const QDir &folder, const QString &stem)
{
    const QStringList copies = copiesOf(folder, stem);
    for (qsizetype i = 0; i < copies.size() - keptCopies; ++i)
        QFile::remove(folder.filePath(copies[i]));
}

} // namespace

void copyBeforeUpgrade(const data::DatabaseAddress &database, const QMap<QString, QString> &versions)
{
    const QFileInfo file(database.file);
    const QDir folder = file.absoluteDir();
    // A copy that was cut off with its program, the next one of which is not made.
    core::WorkFolder::removeAbandoned(folder.path());
    const QString stem = file.completeBaseName() + u".prima-dell-aggiornamento-"_s;
    const QString ending = u'-' + markOf(versions) + u".fdb"_s;
    const QStringList copies = copiesOf(folder, stem);
    if (std::any_of(copies.begin(), copies.end(), [&ending](const QString &copy) { return copy.endsWith(ending); }))
        return;
    try {
        core::copyFile(file.absoluteFilePath(),
                       folder.filePath(stem + core::now().toString(u"yyyyMMdd-HHmmss"_s) + ending));
    } catch (const core::Error &error) {
        throw core::Error(core::tr("L'archivio va aggiornato, ma la copia che si fa prima non è "
                                   "riuscita.\n\r%1\n\rL'archivio non è stato modificato.")
                              .arg(error.text()),
                          error.context());
    }
    removeOld(folder, stem);
}

} // namespace host
