#pragma once
#include "magazzino/ui/MMGRicercaBase.h"

/// List of the stock movements of a period, newest first. Movements are deleted in the entry form only.
class TMMGRicercaMovimentiMagazzino : public TMMGRicercaBase
{
    Q_OBJECT

public:
    explicit TMMGRicercaMovimentiMagazzino(QWidget *owner);
};
