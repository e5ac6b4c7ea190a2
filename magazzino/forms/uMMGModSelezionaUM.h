#pragma once
#include "magazzino/ui/SelectionDialog.h"

/// Selection dialog over the units of measure.
class TMMGModSelezionaUM : public TMMGModSelezionaBase
{
    Q_OBJECT

public:
    explicit TMMGModSelezionaUM(QWidget *owner);
};
