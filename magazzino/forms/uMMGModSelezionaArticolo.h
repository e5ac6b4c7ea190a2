#pragma once
#include "magazzino/ui/MMGModSelezionaBase.h"

/// Selection dialog over the articles.
class TMMGModSelezionaArticolo : public TMMGModSelezionaBase
{
    Q_OBJECT

public:
    explicit TMMGModSelezionaArticolo(QWidget *owner);
};
