#include "platform/core/SaveFile.h"

#include "platform/core/Error.h"
#include "platform/core/FileAccess.h"
#include "platform/core/Translation.h"
#include "platform/core/WorkFolder.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace core {

namespace {

// An open file of the system, closed with the object.
class Handle
{
public:
    Handle(const QString &path, int flags, mode_t mode = 0)
        : number_(::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, mode))
    {
    }
    ~Handle()
    {
        if (number_ >= 0)
            ::close(number_);
    }
    Handle(const Handle &) = delete;
    Handle &operator=(const Handle &) = delete;

    int number() const { return number_; }
    bool isOpen() const { return number_ >= 0; }

    // Network file systems report a full disk as late as here.
    bool close() { return ::close(std::exchange(number_, -1)) == 0; }

    bool write(const QByteArray &content) const
    {
        for (qsizetype done = 0; done < content.size();) {
            const ssize_t count = ::write(number_, content.constData() + done, content.size() - done);
            if (count < 0 && errno != EINTR)
                return false;
            done += std::max<ssize_t>(count, 0);
        }
        return true;
    }

    // Appends all that `source` holds.
    bool append(const Handle &source) const
    {
        constexpr qsizetype portion = qsizetype{1024} * 1024;
        QByteArray buffer(portion, Qt::Uninitialized);
        for (;;) {
            const ssize_t count = ::read(source.number(), buffer.data(), portion);
            if (count == 0)
                return true;
            if (count < 0 ? errno != EINTR : !write(QByteArray::fromRawData(buffer.constData(), count)))
                return false;
        }
    }

private:
    int number_;
};

[[noreturn]] void fail(const QString &path, const QString &reason, const QString &systemText = {})
{
    throw Error(core::tr("Impossibile scrivere il file \"%1\": %2.").arg(path, reason), systemText);
}

[[noreturn]] void failWith(const QString &path, int number)
{
    fail(path, failureReason(number), qt_error_string(number));
}

// What a symbolic link stands for is what gets the contents.
QString targetOf(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isSymLink())
        return info.absoluteFilePath();
    return info.exists() ? info.canonicalFilePath() : info.symLinkTarget();
}

void requirePlace(const QString &path, const QFileInfo &target)
{
    const QFileInfo folder(target.absolutePath());
    if (!folder.isDir())
        fail(path, core::tr("la cartella non esiste"));
    if (target.isDir())
        fail(path, core::tr("esiste una cartella con questo nome"));
    if (target.exists() && !target.isFile())
        fail(path, core::tr("non è un file"));
    if (!folder.isWritable() || (target.exists() && !target.isWritable()))
        fail(path, core::tr("mancano i permessi di scrittura"));
}

mode_t modeFor(const QString &target, Readers readers)
{
    constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
    if (readers == Readers::OwnerOnly)
        return ownerOnly;
    struct stat old = {};
    const bool exists = ::stat(QFile::encodeName(target).constData(), &old) == 0;
    return exists ? old.st_mode & ACCESSPERMS : usualFileMode();
}

// So that the new name survives a power failure. Where the file system cannot, the file is complete all the same.
void flushFolderOf(const QString &path)
{
    const Handle folder(QFileInfo(path).absolutePath(), O_RDONLY | O_DIRECTORY);
    if (folder.isOpen())
        ::fsync(folder.number());
}

// What another program has made may be in the system's memory only. `target` is what an error names.
void flush(const QString &path, const QString &target)
{
    const Handle file(path, O_RDONLY);
    if (!file.isOpen() || ::fsync(file.number()) != 0)
        failWith(target, errno);
}

void rename(const QString &from, const QString &to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        failWith(to, errno);
    flushFolderOf(to);
}

} // namespace

QString failureReason(int number)
{
    switch (number) {
    case ENOSPC:
    case EDQUOT:
        return core::tr("il disco è pieno");
    case EACCES:
    case EPERM:
    case EROFS:
        return core::tr("mancano i permessi di scrittura");
    case EFBIG:
        return core::tr("il file è troppo grande per questo disco");
    case ENAMETOOLONG:
        return core::tr("il nome è troppo lungo");
    default:
        return core::tr("il disco è pieno o non risponde");
    }
}

namespace {

void writeBeside(const QString &path, const QByteArray &content, Readers readers,
                 void (*place)(const QString &from, const QString &to))
{
    const QString target = targetOf(path);
    requirePlace(path, QFileInfo(target));
    const WorkFolder work(QFileInfo(target).absolutePath());
    const QString made = work.file(u"file"_s);
    Handle file(made, O_WRONLY | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
    if (!file.isOpen() || !file.write(content) || ::fsync(file.number()) != 0)
        failWith(path, errno);
    // Not every file system has permissions to set.
    ::fchmod(file.number(), modeFor(target, readers));
    if (!file.close())
        failWith(path, errno);
    place(made, target);
}

} // namespace

void saveFile(const QString &path, const QByteArray &content, Readers readers)
{
    writeBeside(path, content, readers, rename);
}

void saveNewFile(const QString &path, const QByteArray &content, Readers readers)
{
    writeBeside(path, content, readers, moveToNewName);
}

void copyFile(const QString &from, const QString &to)
{
    const Handle source(from, O_RDONLY);
    // Not every file system has locks.
    if (source.isOpen() && ::flock(source.number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        throw Error(core::tr("Il file \"%1\" è in uso da un altro programma.").arg(from));
    const WorkFolder work(QFileInfo(to).absolutePath());
    const QString made = work.file(u"file"_s);
    Handle file(made, O_WRONLY | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
    if (!source.isOpen() || !file.isOpen() || !file.append(source) || ::fsync(file.number()) != 0 || !file.close())
        failWith(to, errno);
    rename(made, to);
}

void moveIntoPlace(const QString &from, const QString &to)
{
    flush(from, to);
    rename(from, to);
}

void moveToNewName(const QString &from, const QString &to)
{
    flush(from, to);
    // A second name never takes an older file's place, as a rename would.
    if (::link(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0) {
        QFile::remove(from);
        flushFolderOf(to);
        return;
    }
    if (errno == EEXIST || QFileInfo::exists(to))
        fail(to, core::tr("esiste già"));
    // A file system without second names.
    rename(from, to);
}

bool appendLine(const QString &path, const QByteArray &line)
{
    Handle file(path, O_WRONLY | O_CREAT | O_APPEND, S_IRUSR | S_IWUSR);
    struct stat before = {};
    if (!file.isOpen() || ::fstat(file.number(), &before) != 0 || !S_ISREG(before.st_mode))
        return false;
    if (file.write(line))
        return file.close();
    struct stat after = {};
    // Another program may have appended behind it meanwhile; then the part stays.
    if (::fstat(file.number(), &after) == 0 && after.st_size > before.st_size &&
        after.st_size - before.st_size < line.size() && ::ftruncate(file.number(), before.st_size) != 0)
        return false;
    return false;
}

bool isDiskFull(const QString &folder)
{
    constexpr qsizetype megabyte = qsizetype{1024} * 1024;
    try {
        const WorkFolder work(folder);
        const Handle file(work.file(u"prova"_s), O_WRONLY | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
        const bool written = file.isOpen() && file.write(QByteArray(megabyte, 'x')) && ::fsync(file.number()) == 0;
        return !written && (errno == ENOSPC || errno == EDQUOT);
    } catch (const Error &) {
        return errno == ENOSPC || errno == EDQUOT;
    }
}

} // namespace core
