#pragma once
#include <QString>

class QWidget;

namespace ui {

/// Brings the control named `name` inside `form` to where the user sees it, whatever page it is on, and gives it the
/// focus. False when there is no such control.
bool showControl(QWidget &form, const QString &name);

} // namespace ui
