#pragma once

class QWidget;

namespace ui {

/// Makes core::showMessage() draw real message boxes, owned by the message's window or else by the active one.
void installMessageBoxes();

} // namespace ui
