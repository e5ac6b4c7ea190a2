#pragma once
#include "magazzino/ui/MMGModSelezionaBase.h"

/// Selection dialog over the suppliers.
class TMMGModSelezionaFornitore : public TMMGModSelezionaBase
{
    Q_OBJECT

public:
    explicit TMMGModSelezionaFornitore(QWidget *owner);
};
