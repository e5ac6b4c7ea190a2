#pragma once
#include "magazzino/reports/uMMGStampaInventarioBase.h"

/// Valued inventory: quantity on hand and its value.
class TMMGStampaInventarioValorizzato : public TMMGStampaInventarioBase
{
    Q_OBJECT

public:
    explicit TMMGStampaInventarioValorizzato(QWidget *owner);
};
