#include "magazzino/forms/uMMGModSelezionaArticolo.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaArticolo::TMMGModSelezionaArticolo(QWidget *owner)
    : TMMGModSelezionaBase(
          itemSelection(u"Seleziona un articolo"_s, u"ANA_MAGA"_s, u"IDANA_MAGA"_s, host::articleCategories), owner)
{
}
