#include "magazzino/forms/uMMGModSelezionaTipoPagamento.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaTipoPagamento::TMMGModSelezionaTipoPagamento(QWidget *owner)
    : TMMGModSelezionaBase(tableSelection(u"Seleziona un tipo di pagamento"_s, u"TIPI_PAGAMENTO"_s,
                                          u"IDTIPO_PAGAMENTO"_s, {u"Tipo di pagamento"_s, u"TIPO_PAGAMENTO"_s, 768},
                                          true),
                           owner)
{
}
