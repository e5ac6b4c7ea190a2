#pragma once
#include "magazzino/fatturapa/Fattura.h"

#include <QByteArray>

namespace fatturapa {

/// The file of `fattura`, format FPR12 of schema 1.2.3, in UTF-8. The same value gives the same bytes. Meant for a
/// value without findings that prevent it; another one gives a file that will be refused.
QByteArray scrivi(const Fattura &fattura);

} // namespace fatturapa
