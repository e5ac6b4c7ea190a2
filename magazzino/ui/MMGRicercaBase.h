#pragma once
#include "platform/ui/SearchForm.h"

/// A search list of the module: opens its entry form through the module's action. It hides when it closes and comes
/// back with filters, rows and place.
class TMMGRicercaBase : public ui::SearchForm
{
    Q_OBJECT

public:
    /// `entryAction` opens the entry form of the same kind of record.
    TMMGRicercaBase(const ui::SearchSpec &spec, const QString &entryAction, QWidget *owner);

    /// Empties the grid to its headers.
    void CreaGrigliaVuota() { grid().setRows({}); }
    /// Runs the query with a WHERE clause (or empty text) and refills the grid.
    void AggiornaGriglia(const QString &filter) { refill(filter); }

protected:
    ui::EntryForm &entryForm() override;

private:
    QString entryAction_;
};
