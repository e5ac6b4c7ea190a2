#pragma once
#include "magazzino/ui/MMGInserimento.h"
#include "platform/ui/RegisterEntry.h"
#include "platform/ui/RegisterList.h"

/// The entry form of one of the module's registers.
class TMMGInserimentoRegistro : public TMMGInserimento<ui::RegisterEntry>
{
public:
    /// `dataSet` of the module.
    TMMGInserimentoRegistro(const ui::RegisterSpec &spec, const QString &dataSet, QWidget *owner);
};

/// The list of one of the module's registers.
class TMMGRicercaRegistro : public ui::RegisterList
{
public:
    TMMGRicercaRegistro(const ui::RegisterSpec &spec, QWidget *owner);

    /// Runs the query with a WHERE clause (or empty text) and refills the grid.
    void AggiornaGriglia(const QString &filter) { refill(filter); }
};
