#pragma once
#include "magazzino/ui/MMGModSelezionaBase.h"

/// Selection dialog over the stock movement reasons.
class TMMGModSelezionaCausaleMagazzino : public TMMGModSelezionaBase
{
    Q_OBJECT

public:
    explicit TMMGModSelezionaCausaleMagazzino(QWidget *owner);
};
