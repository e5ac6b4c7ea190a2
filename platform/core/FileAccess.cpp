#include "platform/core/FileAccess.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

namespace core {

namespace {

mode_t currentMask()
{
    const mode_t mask = ::umask(S_IRWXG | S_IRWXO);
    ::umask(mask);
    return mask;
}

mode_t &usualMask()
{
    static mode_t mask = currentMask();
    return mask;
}

void takeFromOthers(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat found = {};
    constexpr mode_t others = S_IRWXG | S_IRWXO;
    if (::lstat(name.constData(), &found) != 0 || found.st_uid != ::geteuid())
        return;
    if ((S_ISREG(found.st_mode) || S_ISDIR(found.st_mode)) && (found.st_mode & others) != 0)
        ::chmod(name.constData(), found.st_mode & ~others & ALLPERMS);
}

} // namespace

void keepNewFilesPrivate()
{
    usualMask();
    ::umask(S_IRWXG | S_IRWXO);
}

mode_t usualFileMode()
{
    return (S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH) & ~usualMask();
}

void makePrivate(const QString &path)
{
    takeFromOthers(path);
    for (const QString &name : QDir(path).entryList(QDir::Files | QDir::Hidden | QDir::NoSymLinks))
        takeFromOthers(path + u'/' + name);
}

} // namespace core
