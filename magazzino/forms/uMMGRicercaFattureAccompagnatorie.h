#pragma once
#include "magazzino/ui/MMGRicercaBase.h"

/// List of the accompanying invoices of one year.
class TMMGRicercaFattureAccompagnatorie : public TMMGRicercaBase
{
    Q_OBJECT

public:
    explicit TMMGRicercaFattureAccompagnatorie(QWidget *owner);

protected:
    void newRecord() override;
    bool deleteRecord(int id) override;
};
