#pragma once
#include "magazzino/ui/ModuleRegisters.h"
#include "magazzino/ui/RegisterForms.h"

/// Entry form of the carriers.
class TMMGInserimentoVettori : public TMMGInserimentoRegistro
{
    Q_OBJECT

public:
    explicit TMMGInserimentoVettori(QWidget *owner)
        : TMMGInserimentoRegistro(carriers(), QStringLiteral("adsVettore"), owner)
    {
    }
};
