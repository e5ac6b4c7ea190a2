#pragma once
#include <QString>

namespace host {

/// Looks whether an installation is whole: makes a demonstration database in `folder`, starts a session with its
/// modules on it, opens every list and looks for what the program reads besides. Prints a line for each thing. Throws
/// core::Error for the first one that is missing.
void checkInstallation(const QString &folder);

} // namespace host
