#include "magazzino/reports/uMMGStampaInventario.h"

using namespace Qt::StringLiterals;

TMMGStampaInventario::TMMGStampaInventario(QWidget *owner)
    : TMMGStampaInventarioBase({.caption = u"Stampa inventario"_s,
                                .objectName = u"MMGStampaInventario"_s,
                                .query = u"adsInventario"_s,
                                .report = u"Inventario"_s,
                                .categoryFirst = true},
                               owner)
{
}
