#pragma once
#include <QString>

namespace tour {

/// The guided tour: makes a firm and a fresh demonstration database in `folder`, does the program's jobs in the real
/// windows, leaves a picture of each and compares stock and value with the figures they must have. Prints "N passed, N
/// failed"; true when nothing failed.
bool runTour(const QString &folder);

} // namespace tour
