#pragma once
#include "magazzino/ui/MMGModSelezionaBase.h"

/// Selection dialog over the services.
class TMMGModSelezionaServizio : public TMMGModSelezionaBase
{
    Q_OBJECT

public:
    explicit TMMGModSelezionaServizio(QWidget *owner);
};
