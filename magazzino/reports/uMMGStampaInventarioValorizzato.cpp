#include "magazzino/reports/uMMGStampaInventarioValorizzato.h"

using namespace Qt::StringLiterals;

TMMGStampaInventarioValorizzato::TMMGStampaInventarioValorizzato(QWidget *owner)
    : TMMGStampaInventarioBase({.caption = u"Stampa inventario valorizzato"_s,
                                .objectName = u"MMGStampaInventarioValorizzato"_s,
                                .query = u"adsInventarioValorizzato"_s,
                                .report = u"InventarioValorizzato1"_s,
                                .valued = true},
                               owner)
{
}
