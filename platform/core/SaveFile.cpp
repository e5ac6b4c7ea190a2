#include "platform/core/SaveFile.h"

#include "platform/core/Error.h"

#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace core {

namespace {

QString reasonFor(const QSaveFile &file)
{
    const QFileInfo target(file.fileName());
    const QFileInfo folder(target.absolutePath());
    if (!folder.isDir())
        return u"la cartella non esiste"_s;
    if (target.isDir())
        return u"esiste una cartella con questo nome"_s;
    if (!folder.isWritable() || (target.exists() && !target.isWritable()))
        return u"mancano i permessi di scrittura"_s;
    return u"il disco è pieno o non risponde"_s;
}

} // namespace

void failWriting(const QSaveFile &file)
{
    throw Error(u"Impossibile scrivere il file \"%1\": %2."_s.arg(file.fileName(), reasonFor(file)),
                file.errorString());
}

void saveFile(const QString &path, const QByteArray &content)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        failWriting(file);
}

} // namespace core
