#include "magazzino/forms/uMMGModSelezionaTipoTrasporto.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaTipoTrasporto::TMMGModSelezionaTipoTrasporto(QWidget *owner)
    : TMMGModSelezionaBase(tableSelection(u"Seleziona un tipo di trasporto"_s, u"TIPI_TRASPORTO"_s,
                                          u"IDTIPO_TRASPORTO"_s, {u"Tipo di trasporto"_s, u"TIPO_TRASPORTO"_s, 768},
                                          true),
                           owner)
{
}
