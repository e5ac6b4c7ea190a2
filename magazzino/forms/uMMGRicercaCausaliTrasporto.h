#pragma once
#include "magazzino/ui/ModuleRegisters.h"
#include "magazzino/ui/RegisterForms.h"

/// List of the transport reasons.
class TMMGRicercaCausaliTrasporto : public TMMGRicercaRegistro
{
    Q_OBJECT

public:
    explicit TMMGRicercaCausaliTrasporto(QWidget *owner)
        : TMMGRicercaRegistro(transportReasons(), owner)
    {
    }
};
