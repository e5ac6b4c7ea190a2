#pragma once
#include <QByteArray>
#include <QString>

class QSaveFile;

namespace core {

/// Writes `content` beside `path` first and puts it there when all of it is on the disk, so a failure leaves the old
/// file as it was. Throws core::Error with the reason in Italian.
void saveFile(const QString &path, const QByteArray &content);

/// Throws the core::Error that says why `file` could not be written.
[[noreturn]] void failWriting(const QSaveFile &file);

} // namespace core
