#pragma once
#include "magazzino/ui/ModuleRegisters.h"
#include "magazzino/ui/RegisterForms.h"

/// Entry form of the suppliers.
class TMMGInserimentoFornitori : public TMMGInserimentoRegistro
{
    Q_OBJECT

public:
    explicit TMMGInserimentoFornitori(QWidget *owner)
        : TMMGInserimentoRegistro(suppliers(), QStringLiteral("adsFornitore"), owner)
    {
    }
};
