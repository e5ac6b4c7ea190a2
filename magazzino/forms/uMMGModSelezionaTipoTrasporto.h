#pragma once
#include "magazzino/ui/MMGModSelezionaBase.h"

/// Selection dialog over the transport types.
class TMMGModSelezionaTipoTrasporto : public TMMGModSelezionaBase
{
    Q_OBJECT

public:
    explicit TMMGModSelezionaTipoTrasporto(QWidget *owner);
};
