#pragma once
#include "magazzino/ui/ModuleRegisters.h"
#include "magazzino/ui/RegisterForms.h"

/// List of the transport types.
class TMMGRicercaTipiTrasporto : public TMMGRicercaRegistro
{
    Q_OBJECT

public:
    explicit TMMGRicercaTipiTrasporto(QWidget *owner)
        : TMMGRicercaRegistro(transportTypes(), owner)
    {
    }
};
