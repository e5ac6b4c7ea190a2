#pragma once
#include <QString>

#include <sys/types.h>

/// Who may read what the program writes: its own files are their owner's alone, what the user saves for others is not.
namespace core {

/// From now on every file and folder that this process or one of its children makes is the account's alone. Once, at
/// the start, while there is one thread.
void keepNewFilesPrivate();

/// Permissions of a new file that is meant for others, too, as the account's own mask (before keepNewFilesPrivate())
/// leaves them.
mode_t usualFileMode();

/// Takes every other account's rights on the file `path`, or on the folder `path` and the files that lie directly in
/// it; the database engine, for one, gives rights of its own choice. What belongs to another account, and what a file
/// system without permissions refuses, stays as it is. No symbolic link is followed.
void makePrivate(const QString &path);

} // namespace core
