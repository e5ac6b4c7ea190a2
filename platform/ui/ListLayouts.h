#pragma once
#include <QMap>
#include <QString>

/// What the users of the program changed in the layout of their lists, kept in the settings file for each of them.
namespace ui {

/// From now on layouts are kept in `settingsFile` for `user`; nowhere while the file is empty.
void keepListLayouts(const QString &settingsFile, const QString &user);

/// The kept widths of a list's columns in pixels, by the columns' fields; those that make no sense are left out.
QMap<QString, int> keptWidths(const QString &list);
/// Keeps `widths` in the place of those kept before; none stand for the list's own. Throws core::Error when the file
/// cannot be written.
void keepWidths(const QString &list, const QMap<QString, int> &widths);

} // namespace ui
