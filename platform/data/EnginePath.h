#pragma once
#include <QString>

/// The embedded engine takes every path with a colon for a server's and does not open it, wherever symbolic links lead.
/// Another name of the same file (a hard link) in a hidden folder opens.
namespace data {

/// The path by which the engine and its programs open the file `file`: its own, or another name that goes with this
/// program. The engine knows files by their numbers, so it still lets in one program at a time. Throws core::Error when
/// the file can have no such name.
QString enginePath(const QString &file);

/// The folder for what the engine is to make beside files in `folder`: that one, or, where its path has a colon, the
/// next one above it without. A folder that does not exist is returned as it is. Throws core::Error when this account
/// cannot write there or it lies on another disk.
QString engineFolder(const QString &folder);

} // namespace data
