#pragma once
#include "magazzino/ui/MMGRicercaBase.h"

/// List of the transport types.
class TMMGRicercaTipiTrasporto : public TMMGRicercaBase
{
    Q_OBJECT

public:
    explicit TMMGRicercaTipiTrasporto(QWidget *owner);

protected:
    bool deleteRecord(int id) override;
};
