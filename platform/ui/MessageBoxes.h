#pragma once

class QWidget;

namespace ui {

/// Makes core::showMessage() draw real message boxes, over the window that the user is working in.
void installMessageBoxes();

} // namespace ui
