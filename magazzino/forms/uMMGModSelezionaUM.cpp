#include "magazzino/forms/uMMGModSelezionaUM.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaUM::TMMGModSelezionaUM(QWidget *owner)
    : TMMGModSelezionaBase({.caption = u"Seleziona un'unità di misura"_s,
                            .selectText = u"SELECT * FROM UM "_s,
                            .orderText = u" ORDER BY UPPER(UM)"_s,
                            .keyField = u"IDUM"_s,
                            .columns = {{u"Unità di misura"_s, u"UM"_s, 468}},
                            .onShow = OnShow::LoadAll,
                            .returnsText = true},
                           owner)
{
    setObjectName(u"MMGModSelezionaUM"_s);
}
