#pragma once

#include <QString>

class QObject;

namespace host {

/// Loads every "*.bpl" of `folder`; each registers itself while it loads. A library that cannot be loaded is reported
/// in an "Errore" box, the first time, and left out; so is the warehouse module when it is missing. What is loaded
/// already stays as it is.
void loadPackages(const QString &folder);

/// Creates the module object of every registered package and calls its Initialize(). One that fails is reported,
/// destroyed and left out; the others go on.
void startPackages(QObject *owner);

/// Loads the packages that lie beside the program and starts them in the session that is there.
void startModules();

/// Calls Finalize() of every live module object and destroys it, the last started first.
void stopPackages();

} // namespace host
