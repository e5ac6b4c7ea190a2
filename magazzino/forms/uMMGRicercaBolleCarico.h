#pragma once
#include "magazzino/ui/MMGRicercaDocumenti.h"

/// List of the goods receipt notes of one year.
class TMMGRicercaBolleCarico : public TMMGRicercaDocumenti
{
    Q_OBJECT

public:
    explicit TMMGRicercaBolleCarico(QWidget *owner);
};
