#include "magazzino/forms/uMMGModSelezionaCausaleTrasporto.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaCausaleTrasporto::TMMGModSelezionaCausaleTrasporto(QWidget *owner)
    : TMMGModSelezionaBase({.caption = u"Seleziona una causale di trasporto"_s,
                            .selectText = u"SELECT * FROM CAUSALI_TRASPORTO "_s,
                            .orderText = u" ORDER BY UPPER(CAUSALE_TRASPORTO)"_s,
                            .keyField = u"IDCAUSALE_TRASPORTO"_s,
                            .columns = {{u"Causale di trasporto"_s, u"CAUSALE_TRASPORTO"_s, 768}},
                            .onShow = OnShow::LoadAll},
                           owner)
{
    setObjectName(u"MMGModSelezionaCausaleTrasporto"_s);
}
