#include "platform/data/EnginePath.h"

#include "platform/core/Error.h"
#include "platform/core/Translation.h"
#include "platform/core/WorkFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutex>

#include <map>
#include <memory>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace data {

namespace {

const QString secondName = u"archivio.fdb"_s;

/// The second names that this program has given, by the files' own.
struct SecondNames
{
    QMutex mutex; // works in the background open databases, too
    std::map<QString, std::unique_ptr<core::WorkFolder>> folders;
};

SecondNames &secondNames()
{
    static SecondNames names;
    return names;
}

// All zero where there is nothing.
struct stat statOf(const QString &path)
{
    struct stat found = {};
    ::stat(QFile::encodeName(path).constData(), &found);
    return found;
}

bool areOnOneDisk(const QString &left, const QString &right)
{
    return statOf(left).st_dev == statOf(right).st_dev;
}

bool areOneFile(const QString &left, const QString &right)
{
    return areOnOneDisk(left, right) && statOf(left).st_ino == statOf(right).st_ino;
}

[[noreturn]] void refuse(const QString &path, const QString &systemText = {})
{
    throw core::Error(core::tr("Il motore del database non accetta il percorso \"%1\" per via dei due punti: spostare "
                               "o rinominare il file o la cartella.")
                          .arg(path),
                      systemText);
}

} // namespace

QString engineFolder(const QString &folder)
{
    const QString real = QFileInfo(folder).canonicalFilePath();
    if (real.isEmpty() || (!folder.contains(u':') && !real.contains(u':')))
        return folder;
    QDir place(real);
    while (place.path().contains(u':') && place.cdUp()) {
    }
    if (!areOnOneDisk(place.path(), real) || !QFileInfo(place.path()).isWritable())
        refuse(folder);
    return place.path();
}

QString enginePath(const QString &file)
{
    QString path = QFileInfo(file).absoluteFilePath();
    QString real = QFileInfo(file).canonicalFilePath();
    if (real.isEmpty() || (!path.contains(u':') && !real.contains(u':')))
        return path;
    if (!real.contains(u':'))
        return real;
    SecondNames &names = secondNames();
    const QMutexLocker lock(&names.mutex);
    std::unique_ptr<core::WorkFolder> &folder = names.folders[real];
    // A restore puts another file into its place.
    if (folder && areOneFile(folder->file(secondName), real))
        return folder->file(secondName);
    folder = std::make_unique<core::WorkFolder>(engineFolder(QFileInfo(real).absolutePath()));
    QString second = folder->file(secondName);
    if (::link(QFile::encodeName(real).constData(), QFile::encodeName(second).constData()) != 0)
        refuse(real, qt_error_string());
    return second;
}

} // namespace data
