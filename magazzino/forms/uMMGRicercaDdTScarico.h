#pragma once
#include "magazzino/ui/MMGRicercaDocumenti.h"

/// List of the delivery notes of one year.
class TMMGRicercaDdTScarico : public TMMGRicercaDocumenti
{
    Q_OBJECT

public:
    explicit TMMGRicercaDdTScarico(QWidget *owner);
};
