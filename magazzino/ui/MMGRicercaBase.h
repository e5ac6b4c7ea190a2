#pragma once
#include "host/Corvane3Impl.h"
#include "platform/ui/SearchForm.h"

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
    ui::EntryForm &entryForm() override;

    /// Adds the commands "Stampa" and "Salva in PDF" on the selected document (key, PDF file, destination).
    using PrintRoutine = std::function<void(int id, const QString &file, TKxReportDestination destination)>;
    void addPrintCommands(const PrintRoutine &print, const QString &documentKind);

private:
    QString entryAction_;
};

/// Commands of a document list that can be printed.
inline const QStringList documentListCommands =
    ui::listCommands + QStringList{QString(), QStringLiteral("actStampa"), QStringLiteral("actSalvaPDF")};

/// Columns and filters of the lists of suppliers and carriers.
QList<ui::ListColumn> anagraficaColumns();
QList<ui::ListFilter> anagraficaFilters();
/// Columns of the document lists: number, date, and code and name of the counterpart, whose columns begin with
/// `prefix`.
QList<ui::ListColumn> documentColumns(const QString &prefix);
/// Their filters: code and name of the counterpart and the year, whose condition begins with `yearCondition`.
QList<ui::ListFilter> documentFilters(const QString &prefix, const QString &yearCondition);
