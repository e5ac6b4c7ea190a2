#include "platform/core/WorkFolder.h"

#include "platform/core/Error.h"
#include "platform/core/SaveFile.h"
#include "platform/core/Translation.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace core {

namespace {

// Also of those that were made before they were locked.
const QString namePattern = u".corvane-??????"_s;

bool locksAreMissing(const QByteArray &path)
{
    const int handle = ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return false;
    const bool missing = ::flock(handle, LOCK_EX | LOCK_NB) != 0 && errno != EWOULDBLOCK;
    ::close(handle);
    return missing;
}

} // namespace

int lockFolder(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    const int handle = ::open(name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (handle < 0)
        return -1;
    struct stat named = {};
    struct stat opened = {};
    // Between the two steps somebody else may have had the lock and removed the folder.
    const bool mine = ::flock(handle, LOCK_EX | LOCK_NB) == 0 && ::fstat(handle, &opened) == 0 &&
                      ::lstat(name.constData(), &named) == 0 && named.st_ino == opened.st_ino;
    if (mine)
        return handle;
    ::close(handle);
    return -1;
}

WorkFolder::WorkFolder(const QString &parent)
{
    if (!QFileInfo(parent).isDir())
        throw Error(core::tr("La cartella \"%1\" non esiste.").arg(parent));
    removeAbandoned(parent);
    // A second attempt where another program, which cleans up, took the new folder for an abandoned one.
    constexpr int attempts = 10;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        QByteArray made = QFile::encodeName(QDir(parent).absoluteFilePath(u".corvane-XXXXXX"_s));
        if (!::mkdtemp(made.data()))
            throw Error(core::tr("Nella cartella \"%1\" non si può scrivere: %2.").arg(parent, failureReason(errno)),
                        qt_error_string());
        path_ = QFile::decodeName(made);
        lock_ = lockFolder(path_);
        if (lock_ >= 0 || locksAreMissing(made))
            return;
        ::rmdir(made.constData());
    }
    throw Error(core::tr("Nella cartella \"%1\" non si può scrivere.").arg(parent));
}

WorkFolder::~WorkFolder()
{
    QDir(path_).removeRecursively();
    if (lock_ >= 0)
        ::close(lock_);
}

void WorkFolder::removeAbandoned(const QString &parent)
{
    const QStringList names = QDir(parent).entryList({namePattern}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks);
    for (const QString &name : names) {
        const QString path = QDir(parent).absoluteFilePath(name);
        const int lock = lockFolder(path);
        if (lock < 0)
            continue;
        QDir(path).removeRecursively();
        ::close(lock);
    }
}

} // namespace core
