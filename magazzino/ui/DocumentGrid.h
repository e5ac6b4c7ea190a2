#pragma once
#include "magazzino/ui/DocumentRowsModel.h"
#include "platform/ui/ListExport.h"

#include <QPointer>
#include <QStyledItemDelegate>
#include <QTableView>

/// Where a key leads from a cell.
enum class CellStep
{
    Stay, ///< ends an edit
    Next,
    Previous,
    LeaveForward, ///< out of the grid
    LeaveBackward
};

/// Editors of the rows grid: numbers in a line, descriptions in a memo as wide as the column.
class DocumentRowsDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

    /// Takes over what stands in an open editor and closes it; false when the cell refused it.
    bool finish();

Q_SIGNALS:
    /// A key pressed in the open editor leads out of it.
    void stepped(CellStep step);
    /// Does the open editor hold another text than its cell? Told at every change, and when the editor closes.
    void typing(bool different) const;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    mutable QPointer<QWidget> editor_;
    mutable bool refused_ = false;
};

/// The rows grid: column widths follow its own, number columns grow with their numbers, rows with their description.
///
/// Tab and Enter go through the editable cells and never out of the grid, where the next digit would fall into the
/// document's number; F6 leaves it.
class DocumentGrid : public QTableView
{
    Q_OBJECT

public:
    /// An empty grid of the columns that `kind` shows.
    DocumentGrid(const DocumentKind &kind, QWidget *parent);

    /// The rows that it shows.
    DocumentRowsModel &rowsModel() const { return *model_; }
    /// Row of the current cell, or -1.
    int selectedRow() const;
    /// Makes a cell the current one; the row's first one when the column is not shown.
    void select(int row, const RowMember &column);
    /// Makes `cell` the current one and the only one that is selected, whatever keys are held.
    void goTo(const QModelIndex &cell);
    /// Takes over what stands in an open editor; false when the cell refused it.
    bool finishEditing() { return delegate_->finish(); }
    /// The commands by which its rows leave the program.
    ui::ListExport &listExport() const { return *export_; }
    /// Makes each row as high as its description needs it.
    void fitRowHeights();
    /// Fits columns and rows to the grid's width.
    void fitToWidth();

Q_SIGNALS:
    /// It has another size; its columns and rows fit it.
    void resized();
    /// See DocumentRowsDelegate.
    void typing(bool different);

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void step(CellStep step);
    QModelIndex editableFrom(const QModelIndex &from, int direction) const;
    bool fitsLater();
    void fitColumns();
    int widthOfNumbers(int column) const;

    DocumentRowsModel *model_;
    DocumentRowsDelegate *delegate_;
    ui::ListExport *export_;
    bool fitsLater_ = false;
};
