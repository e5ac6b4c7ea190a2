#pragma once
#include <QVariantMap>

/// What the program remembers for each of its users, in the settings file.
namespace ui {

/// From now on it is kept in `settingsFile` for `user`; nowhere while the file is empty.
void rememberFor(const QString &settingsFile, const QString &user);

/// The values kept under `kind` ("elenchi") for what is called `name`; empty when there are none. A slash in a value's
/// name makes a group of its own.
QVariantMap remembered(const QString &kind, const QString &name);
/// Keeps `values` in the place of those kept before. Throws core::Error when the file cannot be written.
void remember(const QString &kind, const QString &name, const QVariantMap &values);

} // namespace ui
