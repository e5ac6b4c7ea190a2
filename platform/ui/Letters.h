#pragma once
class QSize;
class QWidget;

namespace ui {

/// `pixels`, which were measured for letters of the usual size, for those of `widget`: more where they are larger, and
/// never fewer.
int forLetters(int pixels, const QWidget &widget);

/// The same for the size of a window, which grows to that of the screen at most.
QSize forLetters(const QSize &size, const QWidget &widget);

} // namespace ui
