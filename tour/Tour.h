#pragma once
#include <QString>

namespace host {

/// The guided tour: makes a fresh demonstration database "demo.fdb" in `folder`, does the warehouse's main job in the
/// real windows, leaves a picture of each and compares stock and value with the figures they must have. Prints "N
/// passed, N failed"; returns 0 when nothing failed, else 1.
int runTour(const QString &folder);

} // namespace host
