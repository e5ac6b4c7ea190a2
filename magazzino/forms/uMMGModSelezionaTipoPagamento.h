#pragma once
#include "magazzino/ui/SelectionDialog.h"

/// Selection dialog over the payment types.
class TMMGModSelezionaTipoPagamento : public TMMGModSelezionaBase
{
    Q_OBJECT

public:
    explicit TMMGModSelezionaTipoPagamento(QWidget *owner);
};
