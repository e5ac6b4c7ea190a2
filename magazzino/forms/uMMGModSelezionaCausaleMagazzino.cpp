#include "magazzino/forms/uMMGModSelezionaCausaleMagazzino.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaCausaleMagazzino::TMMGModSelezionaCausaleMagazzino(QWidget *owner)
    : TMMGModSelezionaBase({.caption = u"Seleziona una causale di magazzino"_s,
                            .selectText = u"SELECT * FROM CAUSALI_MAGA "_s,
                            .orderText = u" ORDER BY UPPER(CAUSALE_MAGA)"_s,
                            .keyField = u"IDCAUSALE_MAGA"_s,
                            .columns = {{u"Causale di magazzino"_s, u"CAUSALE_MAGA"_s, 768}},
                            .onShow = OnShow::LoadAll},
                           owner)
{
    setObjectName(u"MMGModSelezionaCausaleMagazzino"_s);
}
