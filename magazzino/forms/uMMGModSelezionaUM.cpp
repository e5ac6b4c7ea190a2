#include "magazzino/forms/uMMGModSelezionaUM.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaUM::TMMGModSelezionaUM(QWidget *owner)
    : TMMGModSelezionaBase(tableSelection(u"Seleziona un'unità di misura"_s, u"UM"_s, u"IDUM"_s,
                                          {u"Unità di misura"_s, u"UM"_s, 468}, true),
                           owner)
{
}
