#pragma once
#include "magazzino/ui/ModuleRegisters.h"
#include "magazzino/ui/RegisterForms.h"

/// Entry form of the transport types.
class TMMGInserimentoTipiTrasporto : public TMMGInserimentoRegistro
{
    Q_OBJECT

public:
    explicit TMMGInserimentoTipiTrasporto(QWidget *owner)
        : TMMGInserimentoRegistro(transportTypes(), QStringLiteral("adsTipiTrasporto"), owner)
    {
    }
};
