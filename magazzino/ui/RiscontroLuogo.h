#pragma once
#include "magazzino/fatturapa/Fattura.h"

/// Opens the form in which what `riscontro` says of the accompanying invoice with key `fattura` is typed, with the
/// focus on its field or row. What the user has no right to open is told by the form's command.
void apriLuogo(const fatturapa::Riscontro &riscontro, int fattura);
