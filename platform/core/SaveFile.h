#pragma once
#include <QByteArray>
#include <QString>

/// The one place that gives files their contents: whatever happens, the file is complete or the old one stands.
namespace core {

enum class Readers
{
    AsUsual,  ///< as the old file has it, or as the account makes new files
    OwnerOnly ///< nobody but the account
};

/// Writes `content` in a work folder beside `path` and puts it there when all of it is on the disk. Throws core::Error
/// with the reason in Italian ("il disco è pieno").
void saveFile(const QString &path, const QByteArray &content, Readers readers = Readers::AsUsual);

/// The same under a name that no file may have yet; one that somebody has made meanwhile stays and is the error.
void saveNewFile(const QString &path, const QByteArray &content, Readers readers = Readers::AsUsual);

/// Gives the finished file `from` the name `to` on the same disk, in the place of an older file, once it is on the disk
/// and not in the system's memory only. Throws core::Error.
void moveIntoPlace(const QString &from, const QString &to);
/// The same where there is no file `to` yet; one that somebody has made meanwhile stays and is the error.
void moveToNewName(const QString &from, const QString &to);

/// Copies the file `from` to `to`, which is the account's alone and takes the place of an older file once it is
/// complete. Meanwhile `from` is locked, as the database engine does with its own files: one that is in use is not
/// copied, and nobody can begin to use it. Throws core::Error.
void copyFile(const QString &from, const QString &to);

/// Appends `line` to `path`, which is made the account's alone when it does not exist yet. What does not fit is taken
/// back; returns false then.
bool appendLine(const QString &path, const QByteArray &line);

/// True when not even a megabyte more can be written to `folder`: tells a full disk where another program does not say
/// why it failed.
bool isDiskFull(const QString &folder);

/// What the system's error number means for the user, without capital and full stop: "il disco è pieno".
QString failureReason(int number);

} // namespace core
