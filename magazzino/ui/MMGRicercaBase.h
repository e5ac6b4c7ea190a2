#pragma once
#include "host/Corvane3Impl.h"
#include "platform/ui/SearchForm.h"

namespace ui {
class EntryForm;
}

/// A search list of the module: opens its entry form through the module's action. It hides when it closes and comes
/// back with filters, rows and place.
class TMMGRicercaBase : public ui::SearchForm
{
    Q_OBJECT

public:
    /// `entryAction` opens the entry form of the same kind of record.
    TMMGRicercaBase(const ui::SearchSpec &spec, const QString &entryAction, QWidget *owner);

    /// Runs the query with a WHERE clause (or empty text) and refills the grid.
    void AggiornaGriglia(const QString &filter) { refill(filter); }

protected:
    void openRecord(int id) override;
    void newRecord() override;

    /// Adds the commands "Stampa" and "Salva in PDF" on the selected document (key, PDF file, destination).
    using PrintRoutine = std::function<void(int id, const QString &file, TKxReportDestination destination)>;
    void addPrintCommands(const PrintRoutine &print, const QString &documentKind);

private:
    ui::EntryForm &entryForm() const;

    QString entryAction_;
};

/// Commands of a document list that can be printed.
inline const QStringList documentListCommands = {QStringLiteral("actChiudi"), QStringLiteral("actModifica"), {},
                                                 QStringLiteral("actNuovo"),  QStringLiteral("actElimina"),  {},
                                                 QStringLiteral("actStampa"), QStringLiteral("actSalvaPDF")};

/// Columns of the lists of suppliers and carriers; `nameWidth` of "Ragione sociale".
QList<ui::ListColumn> anagraficaColumns();
/// Their filters "Codice" and "Ragione sociale".
QList<ui::ListFilter> anagraficaFilters();
/// Filters of the document lists: code and name of the counterpart (columns beginning with `prefix`) and the year,
/// whose condition begins with `yearCondition`.
QList<ui::ListFilter> documentFilters(const QString &prefix, const QString &yearCondition);
