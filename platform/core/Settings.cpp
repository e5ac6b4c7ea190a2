#include "platform/core/Settings.h"

#include "platform/core/Error.h"
#include "platform/core/SaveFile.h"
#include "platform/core/Translation.h"
#include "platform/core/WorkFolder.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <QUrl>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace core {

namespace {

// Lets one program at a time change the files of a folder, where the file system has locks. Others need milliseconds;
// one that hangs must not make this one hang, too.
class FolderLock
{
public:
    explicit FolderLock(const QString &folder)
        : handle_(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        constexpr int patience = 2000; // milliseconds
        constexpr int pause = 5;
        QElapsedTimer timer;
        timer.start();
        while (::flock(handle_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK && timer.elapsed() < patience)
            QThread::msleep(pause);
    }
    ~FolderLock()
    {
        if (handle_ >= 0)
            ::close(handle_);
    }
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

private:
    int handle_;
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A list with one text comes back as that text.
QVariantMap valuesOf(const QSettings &settings)
{
    QVariantMap values;
    for (const QString &key : settings.allKeys()) {
        const QVariant value = settings.value(key);
        values.insert(key, value.metaType().id() == QMetaType::QString ? QVariant(value.toStringList()) : value);
    }
    return values;
}

// QSettings reads a file again when its size or its time, in milliseconds, has changed; a clock that ticks slowly would
// hide a change of a letter.
void makeNewer(const QString &path, const QDateTime &than)
{
    QFile file(path);
    if (than.isValid() && file.open(QIODevice::ReadWrite) && file.fileTime(QFile::FileModificationTime) <= than)
        file.setFileTime(than.addMSecs(1), QFile::FileModificationTime);
}

} // namespace

void changeSettings(const QString &path, const std::function<void(QSettings &)> &change)
{
    const QString folder = QFileInfo(path).absolutePath();
    const FolderLock lock(folder);
    const QDateTime before = QFileInfo(path).lastModified();
    QByteArray content;
    {
        const WorkFolder work(folder);
        const QString copy = work.file(u"modifica.ini"_s);
        saveFile(copy, contentOf(path));
        QVariantMap wanted;
        {
            QSettings settings(copy, QSettings::IniFormat);
            change(settings);
            wanted = valuesOf(settings);
        }
        content = contentOf(copy);
        // QSettings does not notice that a full disk cut its file short, so another one reads what was written.
        const QString written = work.file(u"verifica.ini"_s);
        saveFile(written, content);
        if (valuesOf(QSettings(written, QSettings::IniFormat)) != wanted)
            throw Error(core::tr("Impossibile scrivere il file \"%1\": il disco è pieno o non risponde.").arg(path));
    }
    saveFile(path, content, Readers::OwnerOnly);
    makeNewer(path, before);
}

QString userGroup(const QString &group, const QString &user)
{
    return group + u'/' + QString::fromLatin1(QUrl::toPercentEncoding(user));
}

} // namespace core
