#pragma once
#include "magazzino/fatturapa/Dati.h"
#include "magazzino/fatturapa/Fattura.h"

namespace fatturapa {

/// What the law asks of the paper that goes with goods and `dati` lack: who sends, who receives, what and how much.
/// Header, rows and firm are read; a delivery note has the columns of an invoice.
QList<Riscontro> controllaCarta(const Dati &dati);

} // namespace fatturapa
