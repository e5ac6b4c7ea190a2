#include "magazzino/forms/uMMGModSelezionaCausaleMagazzino.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaCausaleMagazzino::TMMGModSelezionaCausaleMagazzino(QWidget *owner)
    : TMMGModSelezionaBase(tableSelection(u"Seleziona una causale di magazzino"_s, u"CAUSALI_MAGA"_s,
                                          u"IDCAUSALE_MAGA"_s, {u"Causale di magazzino"_s, u"CAUSALE_MAGA"_s, 768}),
                           owner)
{
}
