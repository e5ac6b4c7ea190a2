#include "host/start/Leftovers.h"

#include "host/DatabaseSetup.h"
#include "platform/core/Clock.h"
#include "platform/core/Messages.h"
#include "platform/core/SaveFile.h"
#include "platform/core/Translation.h"
#include "platform/data/DatabaseFile.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// The engine writes an empty database page by page, its first page among the last: what a cut leaves is shorter than an
// empty database, begins with zeros or with the first page's mark, and does not open. A damaged database that somebody
// has worked in is longer.
bool mayBeCutCreation(const QString &path)
{
    constexpr qint64 emptyDatabase = qint64{2} * 1024 * 1024; // bytes at most
    constexpr qint64 headSize = 16;
    QFile file(path);
    if (!QFileInfo(path).isFile() || file.size() > emptyDatabase || !file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray head = file.read(headSize);
    return head.size() == headSize && (head.at(0) == 0 || head.at(0) == 1) && head.mid(1, 3) == QByteArray(3, '\0');
}

bool isUnreadable(const data::DatabaseAddress &address)
{
    const data::OpenFailure failure = data::checkDatabase(address).failure;
    return failure == data::OpenFailure::NotADatabase || failure == data::OpenFailure::Other;
}

QString freeName(const QFileInfo &file)
{
    return file.absolutePath() + u'/' + file.completeBaseName() + u".incompleto-"_s +
           core::now().toString(u"yyyyMMdd-HHmmss"_s) + u".fdb"_s;
}

} // namespace

Leftover leftoverAt(const data::DatabaseAddress &address)
{
    if (isUnfinished(address))
        return Leftover::Empty;
    return address.isEmbedded() && mayBeCutCreation(address.file) && isUnreadable(address) ? Leftover::Unreadable
                                                                                           : Leftover::None;
}

bool makeRoom(QWidget *owner, const data::DatabaseAddress &address, Leftover leftover)
{
    const QString name = address.toString();
    if (leftover == Leftover::Empty)
        return core::confirmLoss(
            owner,
            core::tr(
                "La creazione dell'archivio \"%1\" si era interrotta: non contiene dati.\n\rSostituirlo con uno nuovo?")
                .arg(name));
    const QString kept = freeName(QFileInfo(address.file));
    if (!core::confirmLoss(owner, core::tr("Il file \"%1\" non si può aprire: forse la sua creazione si era "
                                           "interrotta.\n\rCrearne uno nuovo e conservare quello attuale come \"%2\"?")
                                      .arg(name, kept)))
        return false;
    core::moveToNewName(address.file, kept);
    return true;
}

} // namespace host
