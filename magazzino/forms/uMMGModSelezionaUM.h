#pragma once
#include "magazzino/ui/MMGModSelezionaBase.h"

/// Selection dialog over the units of measure.
class TMMGModSelezionaUM : public TMMGModSelezionaBase
{
    Q_OBJECT

public:
    explicit TMMGModSelezionaUM(QWidget *owner);
};
