#pragma once
#include "magazzino/ui/MMGRicercaBase.h"

/// List of the carriers.
class TMMGRicercaVettori : public TMMGRicercaBase
{
    Q_OBJECT

public:
    explicit TMMGRicercaVettori(QWidget *owner);

protected:
    bool deleteRecord(int id) override;
};
