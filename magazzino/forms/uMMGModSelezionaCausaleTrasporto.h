#pragma once
#include "magazzino/ui/MMGModSelezionaBase.h"

/// Selection dialog over the transport reasons.
class TMMGModSelezionaCausaleTrasporto : public TMMGModSelezionaBase
{
    Q_OBJECT

public:
    explicit TMMGModSelezionaCausaleTrasporto(QWidget *owner);
};
