#pragma once
#include "magazzino/ui/ModuleRegisters.h"
#include "magazzino/ui/RegisterForms.h"

/// List of the carriers.
class TMMGRicercaVettori : public TMMGRicercaRegistro
{
    Q_OBJECT

public:
    explicit TMMGRicercaVettori(QWidget *owner)
        : TMMGRicercaRegistro(carriers(), owner)
    {
    }
};
