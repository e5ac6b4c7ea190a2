#include "magazzino/forms/uMMGModSelezionaTipoTrasporto.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaTipoTrasporto::TMMGModSelezionaTipoTrasporto(QWidget *owner)
    : TMMGModSelezionaBase({.caption = u"Seleziona un tipo di trasporto"_s,
                            .selectText = u"SELECT * FROM TIPI_TRASPORTO "_s,
                            .orderText = u" ORDER BY UPPER(TIPO_TRASPORTO)"_s,
                            .keyField = u"IDTIPO_TRASPORTO"_s,
                            .columns = {{u"Tipo di trasporto"_s, u"TIPO_TRASPORTO"_s, 768}},
                            .onShow = OnShow::LoadAll,
                            .returnsText = true},
                           owner)
{
    setObjectName(u"MMGModSelezionaTipoTrasporto"_s);
}
