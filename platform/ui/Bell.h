#pragma once
#include <functional>

namespace ui {

using Bell = std::function<void()>;

/// Sounds the desktop's bell: something typed or scanned was not taken, and nobody may be looking.
void ringBell();

/// From now on `bell` rings in its place, an empty one is the desktop's again. Returns the former; for tests.
Bell setBell(Bell bell);

} // namespace ui
