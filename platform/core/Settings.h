#pragma once
#include <QString>

#include <QSettings>
#include <functional>

namespace core {

/// Changes the ini file `path` as a whole: a copy is changed and takes its place when all of it is on the disk, so a
/// failure leaves the old file as it was. The file is the account's alone, and one program at a time changes it:
/// `change` sees what others have written before. Reading needs nothing but QSettings. Throws core::Error with the
/// reason.
void changeSettings(const QString &path, const std::function<void(QSettings &)> &change);

/// The group of settings in which `user` has a part of `group` alone; a slash in a name opens no group of its own.
QString userGroup(const QString &group, const QString &user);

} // namespace core
