#pragma once
#include "magazzino/ui/MMGRicercaBase.h"

/// List of the suppliers.
class TMMGRicercaFornitori : public TMMGRicercaBase
{
    Q_OBJECT

public:
    explicit TMMGRicercaFornitori(QWidget *owner);

protected:
    bool deleteRecord(int id) override;
};
