#pragma once

namespace ui {

/// Takes the icons of commands and message boxes from the packaged theme, in the shades that fit the palette; without
/// the theme the style's own ones serve. Once, before the first window.
void useIconTheme();

} // namespace ui
