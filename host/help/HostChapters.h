#pragma once

namespace host {

/// Says where the manual tells about the host's windows.
void addHostChapters();

} // namespace host
