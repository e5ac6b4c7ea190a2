#include "host/backup/Backup.h"

#include "host/backup/Gbak.h"
#include "host/schema/HostSchema.h"
#include "platform/core/Clock.h"
#include "platform/core/Error.h"
#include "platform/core/FileAccess.h"
#include "platform/core/SaveFile.h"
#include "platform/core/Translation.h"
#include "platform/core/WorkFolder.h"
#include "platform/data/Connection.h"
#include "platform/data/DatabaseFile.h"
#include "platform/data/EnginePath.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace host {

namespace {

/// Rows of each table.
using Counts = QMap<QString, int>;

data::DatabaseAddress embedded(const QString &file)
{
    data::DatabaseAddress address;
    address.file = file;
    return address;
}

// Where a database of this machine lies.
QStringList folderOf(const data::DatabaseAddress &database)
{
    return database.isEmbedded() ? QStringList{QFileInfo(database.file).absolutePath()} : QStringList();
}

QString gbakName(const data::DatabaseAddress &database)
{
    return database.isEmbedded() ? data::enginePath(database.file) : database.toString();
}

// Counts the tables' rows as the program tells them and shows where it is.
class Follower
{
public:
    /// `verb` is what is done with a table (%1), for the user; the steps go on from `firstStep`.
    Follower(core::Progress &progress, const QString &verb, int firstStep)
        : progress_(progress)
        , verb_(verb)
        , step_(firstStep)
    {
    }

    void operator()(const QString &line)
    {
        static const QRegularExpression announced(u"^writing table (\\S.*)$"_s);
        static const QRegularExpression table(u"^(?:writing|restoring) data for table (\\S.*)$"_s);
        static const QRegularExpression rows(u"^(\\d+) records (?:written|restored)$"_s);
        if (announced.match(line).hasMatch()) {
            ++announced_;
        } else if (const auto found = table.match(line); found.hasMatch()) {
            current_ = found.captured(1);
            counts_[current_] = 0;
            // Each table is written and, in the check, read back.
            if (announced_ > 0)
                progress_.setTotal(2 * announced_);
            progress_.setText(verb_.arg(current_));
            progress_.step(++step_);
        } else if (const auto count = rows.match(line); count.hasMatch()) {
            counts_[current_] = count.captured(1).toInt();
        }
    }

    const Counts &counts() const { return counts_; }

private:
    core::Progress &progress_;
    QString verb_;
    int step_;
    int announced_ = 0;
    QString current_;
    Counts counts_;
};

// Restores `file` into the database `target`; the rows that the program says it has restored.
Counts restore(const QString &file, const data::DatabaseAddress &target, const QString &verb, int firstStep,
               core::Progress &progress)
{
    Follower follower(progress, verb, firstStep);
    runGbak(target, {u"-c"_s, u"-v"_s, data::enginePath(file), gbakName(target)}, folderOf(target), progress,
            [&follower](const QString &line) { follower(line); });
    return follower.counts();
}

// What the names of kept databases begin with.
QString keptPrefix(const QFileInfo &file)
{
    return file.completeBaseName() + u".prima-del-ripristino-"_s;
}

QString keptName(const QString &file)
{
    const QFileInfo info(file);
    const QString name = info.absolutePath() + u'/' + keptPrefix(info) + core::now().toString(u"yyyyMMdd-HHmmss"_s);
    QString path = name + u".fdb"_s;
    for (int number = 2; QFileInfo::exists(path); ++number)
        path = name + u"-%1.fdb"_s.arg(number);
    return path;
}

bool areOneFile(const QString &left, const QString &right)
{
    struct stat first = {};
    struct stat second = {};
    return ::stat(QFile::encodeName(left).constData(), &first) == 0 &&
           ::stat(QFile::encodeName(right).constData(), &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

// The old file gets a second name first, so that there is a database under its own name at every moment.
QString replaceKeepingOld(const QString &newFile, const QString &target)
{
    if (!QFileInfo::exists(target)) {
        core::moveIntoPlace(newFile, target);
        return {};
    }
    QString kept = keptName(target);
    const QByteArray oldName = QFile::encodeName(target);
    // File systems without second names: a moment without the database, which a failure ends again.
    const bool linked = ::link(oldName.constData(), QFile::encodeName(kept).constData()) == 0;
    if (!linked && !QFile::rename(target, kept))
        throw core::Error(core::tr("Impossibile conservare il database attuale come \"%1\".").arg(kept),
                          qt_error_string());
    try {
        core::moveIntoPlace(newFile, target);
    } catch (const std::exception &) {
        if (linked)
            QFile::remove(kept);
        else
            QFile::rename(kept, target);
        throw;
    }
    return kept;
}

void requireOwnDatabase(const Counts &tables)
{
    // Every database of this program has these from its first moment.
    for (const QString &table : {u"TABLE_VERSION"_s, u"OPZIONI"_s, u"UTENTI"_s}) {
        if (!tables.contains(table))
            throw core::Error(core::tr("La copia non contiene un database di questo programma."), table);
    }
}

void requireKnownVersion(const data::DatabaseAddress &restored)
{
    data::Connection connection(data::nativeConnectionString(restored));
    if (isHostSchemaNewer(connection))
        throw core::Error(
            core::tr("La copia è di una versione più recente del programma: per ripristinarla serve quella."));
}

QString restoreEmbedded(const QString &file, const QString &target, core::Progress &progress)
{
    removeLeftovers(embedded(target));
    const core::WorkFolder work(data::engineFolder(QFileInfo(target).absolutePath()));
    const QString restored = work.file(u"ripristino.fdb"_s);
    const Counts told = restore(file, embedded(restored), core::tr("Ripristino della tabella %1…"), 0, progress);
    progress.setText(core::tr("Verifica del database ripristinato…"));
    const Counts found = tableRows(embedded(restored));
    requireOwnDatabase(found);
    requireKnownVersion(embedded(restored));
    for (auto it = told.begin(); it != told.end(); ++it) {
        if (found.value(it.key(), -1) != it.value())
            throw core::Error(core::tr("Il database ripristinato non è completo (tabella %1).").arg(it.key()));
    }
    progress.check();
    core::makePrivate(restored);
    // Nobody may work on in the old file under its new name.
    if (data::checkDatabase(embedded(target)).failure == data::OpenFailure::InUse)
        throw core::Error(
            core::tr("Il database \"%1\" è in uso: chiudere gli altri programmi che lo usano.").arg(target));
    return replaceKeepingOld(restored, target);
}

void restoreOnServer(const QString &file, const data::DatabaseAddress &target, core::Progress &progress)
{
    if (data::checkDatabase(target).failure == data::OpenFailure::None)
        throw core::Error(takenOnServer(target.file));
    bool begun = false;
    // Killed while the server makes the database, the program would not have told that it is its own.
    const QDeadlineTimer soon(std::chrono::seconds(10));
    const auto mayStop = [&begun, &soon] { return begun || soon.hasExpired(); };
    try {
        Follower follower(progress, core::tr("Ripristino della tabella %1…"), 0);
        runGbak(
            target, {u"-c"_s, u"-v"_s, data::enginePath(file), gbakName(target)}, {}, progress,
            [&](const QString &line) {
                begun = begun || line.startsWith(u"created database");
                follower(line);
            },
            mayStop);
        requireOwnDatabase(tableRows(target));
        requireKnownVersion(target);
    } catch (const std::exception &) {
        // Only what this run has created.
        if (begun)
            data::dropQuietly(target, u"ripristino"_s);
        throw;
    }
}

} // namespace

QString takenOnServer(const QString &file)
{
    return core::tr("Sul server esiste già il database \"%1\": indicare un nome nuovo.").arg(file);
}

QMap<QString, int> tableRows(const data::DatabaseAddress &database)
{
    data::Connection connection(data::nativeConnectionString(database));
    const data::Rows tables = connection.select(
        u"SELECT TRIM(RDB$RELATION_NAME) AS TABELLA FROM RDB$RELATIONS "
        "WHERE COALESCE(RDB$SYSTEM_FLAG, 0) = 0 AND RDB$VIEW_BLR IS NULL AND COALESCE(RDB$RELATION_TYPE, 0) = 0"_s);
    Counts counts;
    for (qsizetype row = 0; row < tables.size(); ++row) {
        const QString table = tables.text(row, u"TABELLA");
        counts[table] = connection.select(u"SELECT COUNT(*) AS RIGHE FROM \"%1\""_s.arg(table)).integer(0, u"RIGHE");
    }
    return counts;
}

void removeLeftovers(const data::DatabaseAddress &database)
{
    if (!database.isEmbedded())
        return;
    const QFileInfo file(database.file);
    const QString folder = file.absolutePath();
    core::WorkFolder::removeAbandoned(folder);
    // A restore that ended between its two steps.
    for (const QString &name : QDir(folder).entryList(QDir::Files)) {
        if (name.startsWith(keptPrefix(file)) && areOneFile(folder + u'/' + name, file.absoluteFilePath()))
            QFile::remove(folder + u'/' + name);
    }
}

void backupDatabase(const data::DatabaseAddress &database, const QString &file, core::Progress &progress)
{
    if (database.isEmbedded() && !QFileInfo::exists(database.file))
        throw core::Error(core::tr("Il database \"%1\" non esiste.").arg(database.file));
    const core::WorkFolder work(data::engineFolder(QFileInfo(file).absolutePath()));
    const QString backup = work.file(u"copia.fbk"_s);
    Follower follower(progress, core::tr("Copia della tabella %1…"), 0);
    // The database is written to as well: it counts its transactions.
    runGbak(database, {u"-b"_s, u"-v"_s, gbakName(database), backup}, folderOf(database) + QStringList(work.path()),
            progress, [&follower](const QString &line) { follower(line); });
    const Counts &written = follower.counts();
    const data::DatabaseAddress copy = embedded(work.file(u"verifica.fdb"_s));
    restore(backup, copy, core::tr("Verifica della tabella %1…"), static_cast<int>(written.size()), progress);
    if (written.isEmpty() || tableRows(copy) != written)
        throw core::Error(core::tr("La copia non corrisponde al database e non è stata conservata."));
    progress.check();
    // It holds all that the database holds, which is its owner's alone as well.
    QFile::setPermissions(backup, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    core::moveIntoPlace(backup, file);
}

QString restoreDatabase(const QString &file, const data::DatabaseAddress &target, core::Progress &progress)
{
    if (!QFileInfo(file).isFile())
        throw core::Error(core::tr("Il file \"%1\" non esiste.").arg(file));
    if (target.isEmbedded())
        return restoreEmbedded(file, QFileInfo(target.file).absoluteFilePath(), progress);
    restoreOnServer(file, target, progress);
    return {};
}

} // namespace host
