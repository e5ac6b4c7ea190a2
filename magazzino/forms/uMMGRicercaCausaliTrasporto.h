#pragma once
#include "magazzino/ui/MMGRicercaBase.h"

/// List of the transport reasons.
class TMMGRicercaCausaliTrasporto : public TMMGRicercaBase
{
    Q_OBJECT

public:
    explicit TMMGRicercaCausaliTrasporto(QWidget *owner);

protected:
    bool deleteRecord(int id) override;
};
