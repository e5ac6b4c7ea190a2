#include "magazzino/forms/uMMGModSelezionaFornitore.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaFornitore::TMMGModSelezionaFornitore(QWidget *owner)
    : TMMGModSelezionaBase(anagraficaSelection(u"Seleziona un fornitore"_s, u"FORNITORI"_s, u"IDFORNITORE"_s), owner)
{
}
