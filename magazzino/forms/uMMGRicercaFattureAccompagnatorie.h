#pragma once
#include "magazzino/ui/MMGRicercaDocumenti.h"

/// List of the accompanying invoices of one year.
class TMMGRicercaFattureAccompagnatorie : public TMMGRicercaDocumenti
{
    Q_OBJECT

public:
    explicit TMMGRicercaFattureAccompagnatorie(QWidget *owner);
};
