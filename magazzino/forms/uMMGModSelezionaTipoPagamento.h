#pragma once
#include "magazzino/ui/MMGModSelezionaBase.h"

/// Selection dialog over the payment types.
class TMMGModSelezionaTipoPagamento : public TMMGModSelezionaBase
{
    Q_OBJECT

public:
    explicit TMMGModSelezionaTipoPagamento(QWidget *owner);
};
