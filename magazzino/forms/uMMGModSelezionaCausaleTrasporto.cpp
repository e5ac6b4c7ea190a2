#include "magazzino/forms/uMMGModSelezionaCausaleTrasporto.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaCausaleTrasporto::TMMGModSelezionaCausaleTrasporto(QWidget *owner)
    : TMMGModSelezionaBase(tableSelection(u"Seleziona una causale di trasporto"_s, u"CAUSALI_TRASPORTO"_s,
                                          u"IDCAUSALE_TRASPORTO"_s,
                                          {u"Causale di trasporto"_s, u"CAUSALE_TRASPORTO"_s, 768}),
                           owner)
{
}
