#pragma once
#include "magazzino/ui/ModuleRegisters.h"
#include "magazzino/ui/RegisterForms.h"

/// Entry form of the transport reasons.
class TMMGInserimentoCausaliTrasporto : public TMMGInserimentoRegistro
{
    Q_OBJECT

public:
    explicit TMMGInserimentoCausaliTrasporto(QWidget *owner)
        : TMMGInserimentoRegistro(transportReasons(), QStringLiteral("adsCausaliTrasporto"), owner)
    {
    }
};
