#pragma once
#include "magazzino/ui/MMGRicercaBase.h"

/// List of the goods receipt notes of one year.
class TMMGRicercaBolleCarico : public TMMGRicercaBase
{
    Q_OBJECT

public:
    explicit TMMGRicercaBolleCarico(QWidget *owner);

protected:
    bool deleteRecord(int id) override;
};
