#pragma once
#include "magazzino/ui/MMGRicercaBase.h"

/// List of the delivery notes of one year.
class TMMGRicercaDdTScarico : public TMMGRicercaBase
{
    Q_OBJECT

public:
    explicit TMMGRicercaDdTScarico(QWidget *owner);

protected:
    bool deleteRecord(int id) override;
};
