#pragma once
#include <QString>
#include <QWidget>

namespace ui {

/// Puts `window`, which is not shown yet, where the user last left the one called `name`, as far as there is room, and
/// keeps where they leave it from now on. Nothing is kept of one that was never moved, nor without a name.
void keepPlace(QWidget *window, const QString &name);

} // namespace ui
