#pragma once
#include "magazzino/fatturapa/Composizione.h"

namespace fatturapa {

/// What the exchange system would refuse of `fattura`, with its codes, and what else does not add up; `dati` is what it
/// was made from. Empty when there is nothing to say.
QList<Riscontro> controlla(const Fattura &fattura, const Dati &dati);

/// componi() and controlla() together, each thing said once.
Composizione esamina(const Dati &dati);

/// May the file be written? False while a finding prevents it.
bool ammette(const QList<Riscontro> &riscontri);

/// "IT01234567890_00001.xml": country and tax code of who sends, and what tells this file from all others of theirs.
QString nomeFile(const Fattura &fattura);

/// What is wrong with a file that is ready: its name, one that was `usato` before, its size.
QList<Riscontro> controllaFile(const QString &nome, bool usato, qsizetype byte);

} // namespace fatturapa
