#pragma once
#include "host/Corvane3Impl.h"
#include "platform/ui/ResultGrid.h"

#include <QDialog>

class QLineEdit;
class QVBoxLayout;
namespace ui {
class CategoryTree;
class LetterBar;
class ListKeys;
} // namespace ui

/// A text filter of a selection dialog; Enter in it searches.
struct TextFilter
{
    QString name; ///< control name
    QString label;
    QString column; ///< compared with CONTAINING: anywhere in the value, without case
};

/// A filter by a category and everything below it.
struct CategoryFilter
{
    QString table;  ///< self-referencing through IDPADRE, caption CATEGORIA
    QString key;    ///< its key column
    QString column; ///< qualified column of the query that is compared
};

enum class OnShow
{
    KeepRows, ///< the rows of the last search stay
    LoadLetterA,
    LoadAll
};

/// What one selection dialog is: texts of its query, columns and filters.
struct SelectionSpec
{
    QString caption;
    QString selectText; ///< ends with a blank
    QString orderText;  ///< begins with a blank
    QString keyField;
    QList<ui::ListColumn> columns;
    QList<TextFilter> filters;
    CategoryFilter category;     ///< unused while its table is empty
    QString letterColumn;        ///< column of the letter bar; no bar while empty
    bool searchCommands = false; ///< "Cerca" and "Ripristina"
    OnShow onShow = OnShow::KeepRows;
    bool returnsText = false; ///< the result carries the first column's text as well
    bool longTexts = false;   ///< cells show texts of several lines from their first one
};

/// The modal dialog that lists the rows of a table and returns the one chosen. One instance lives as long as the module
/// and keeps filters and rows from one use to the next.
class TMMGModSelezionaBase : public QDialog
{
    Q_OBJECT

public:
    TMMGModSelezionaBase(const SelectionSpec &spec, QWidget *owner);

    /// The selected row's key, -1 when none is selected; the text is filled by the dialogs that return one.
    TCodiceTesto ApriSelezionato() const;
    /// Runs the query with a WHERE clause (or empty text) and refills the grid.
    void AggiornaGriglia(const QString &filter);
    /// "Cerca": the filter fields joined with AND.
    void Cerca();
    /// "Ripristina": empties the filters and fills the category tree again; the grid stays.
    void Ripristina();

    void done(int result) override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    int dialogWidth() const;
    void createFilterBar(QVBoxLayout *layout);
    ui::LetterBar *createLetterBar(QVBoxLayout *layout);
    void createKeys(ui::LetterBar *letters);
    void createButtons(QVBoxLayout *layout);
    void searchLetter(const QString &caption);
    QString filterText() const;

    SelectionSpec spec_;
    ui::ResultGrid *grid_ = nullptr;
    QList<QLineEdit *> filterEdits_;
    ui::CategoryTree *category_ = nullptr;
    ui::ListKeys *keys_ = nullptr;
};
