#pragma once
#include "host/Corvane3Impl.h"
#include "magazzino/ui/CategoryFilter.h"
#include "platform/ui/ListPanel.h"

#include <QDialog>

enum class OnShow
{
    KeepRows, ///< the rows of the last search stay
    LoadLetterA,
    LoadAll
};

/// What one selection dialog is.
struct SelectionSpec
{
    QString caption;
    ui::ListSpec list;
    bool searchCommands = false; ///< "Cerca" and "Ripristina"
    OnShow onShow = OnShow::KeepRows;
    bool returnsText = false; ///< the result carries the first column's text as well
};

/// The dialog over a table with one text, which `column` shows: all its rows, each time it is shown.
SelectionSpec tableSelection(const QString &caption, const QString &table, const QString &key,
                             const ui::ListColumn &column, bool returnsText = false);
/// The one over articles or services, with their categories.
SelectionSpec itemSelection(const QString &caption, const QString &table, const QString &key,
                            const ui::CategoryTable &categories);
/// The one over customers or suppliers: at first those with A.
SelectionSpec anagraficaSelection(const QString &caption, const QString &table, const QString &key);

/// The modal dialog that lists the rows of a table and returns the one chosen. One instance lives as long as the module
/// and keeps filters and rows from one use to the next.
class TMMGModSelezionaBase : public QDialog
{
    Q_OBJECT

public:
    TMMGModSelezionaBase(const SelectionSpec &spec, QWidget *owner);

    /// The selected row's key, -1 when none is selected; the text is filled by the dialogs that return one.
    TCodiceTesto ApriSelezionato() const;
    /// Empties the grid to its headers.
    void CreaGrigliaVuota() { list_->grid().setRows({}); }
    /// Runs the query with a WHERE clause (or empty text) and refills the grid.
    void AggiornaGriglia(const QString &filter) { list_->fill(filter); }
    /// "Cerca": the filter fields joined with AND.
    void Cerca() { list_->search(); }
    /// "Ripristina": empties the filters and fills the category tree again; the grid stays.
    void Ripristina() { list_->reset(); }

    void done(int result) override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    int dialogWidth() const;
    void createButtons();
    QPushButton *pushButton(const QString &name, const QString &caption, QWidget *parent,
                            const std::function<void()> &run);

    SelectionSpec spec_;
    ui::ListPanel *list_;
};
