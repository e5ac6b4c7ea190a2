#pragma once
class QWidget;

namespace ui {

/// Set on controls that have their name from nameControls().
inline constexpr const char *namedByWindow = "namedByWindow";

/// Gives every control of `window` that takes the focus and has no name of its own one for screen readers: the caption
/// before it or the title of its section, and what its hint says. Names that were given stay.
void nameControls(QWidget &window);

} // namespace ui
