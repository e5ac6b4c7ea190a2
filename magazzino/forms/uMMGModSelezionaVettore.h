#pragma once
#include "magazzino/ui/MMGModSelezionaBase.h"

/// Selection dialog over the carriers.
class TMMGModSelezionaVettore : public TMMGModSelezionaBase
{
    Q_OBJECT

public:
    explicit TMMGModSelezionaVettore(QWidget *owner);
};
