#pragma once
#include "magazzino/reports/uMMGStampaInventarioBase.h"

/// Inventory: code, description and quantity on hand.
class TMMGStampaInventario : public TMMGStampaInventarioBase
{
    Q_OBJECT

public:
    explicit TMMGStampaInventario(QWidget *owner);
};
