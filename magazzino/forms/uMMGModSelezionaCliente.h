#pragma once
#include "magazzino/ui/MMGModSelezionaBase.h"

/// Selection dialog over the customers.
class TMMGModSelezionaCliente : public TMMGModSelezionaBase
{
    Q_OBJECT

public:
    explicit TMMGModSelezionaCliente(QWidget *owner);
};
