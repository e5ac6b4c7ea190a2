#include "magazzino/forms/uMMGModSelezionaTipoPagamento.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaTipoPagamento::TMMGModSelezionaTipoPagamento(QWidget *owner)
    : TMMGModSelezionaBase({.caption = u"Seleziona un tipo di pagamento"_s,
                            .selectText = u"SELECT * FROM TIPI_PAGAMENTO "_s,
                            .orderText = u" ORDER BY UPPER(TIPO_PAGAMENTO)"_s,
                            .keyField = u"IDTIPO_PAGAMENTO"_s,
                            .columns = {{u"Tipo di pagamento"_s, u"TIPO_PAGAMENTO"_s, 768}},
                            .onShow = OnShow::LoadAll,
                            .returnsText = true},
                           owner)
{
    setObjectName(u"MMGModSelezionaTipoPagamento"_s);
}
