#pragma once
#include "magazzino/ui/ModuleRegisters.h"
#include "magazzino/ui/RegisterForms.h"

/// List of the suppliers.
class TMMGRicercaFornitori : public TMMGRicercaRegistro
{
    Q_OBJECT

public:
    explicit TMMGRicercaFornitori(QWidget *owner)
        : TMMGRicercaRegistro(suppliers(), owner)
    {
    }
};
