#pragma once
#include "magazzino/ui/DocumentRow.h"

#include <QAbstractTableModel>
#include <QPointer>
#include <QStyledItemDelegate>
#include <QTableView>

enum class RowColumn
{
    Codice,
    Descrizione,
    Costo,
    Prezzo,
    Sconto,
    Quantita,
    Importo,
    IVA,
    UM
};

/// A visible column of a document's rows grid.
struct RowColumnSpec
{
    RowColumn column = RowColumn::Codice;
    QString header;
    int width = 0; ///< pixels, or per cent of the usable width; 0 takes the rest
    bool percent = false;
};

/// The rows of a document as an editable table.
///
/// Article and service rows edit unit price, discount and quantity; text rows only their description; non-taxable rows
/// both. A value out of range is refused and the old one stays.
class DocumentRowsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    DocumentRowsModel(QList<RowColumnSpec> columns, QObject *parent);

    const QList<DocumentRow> &rows() const { return rows_; }
    const QList<RowColumnSpec> &columns() const { return columns_; }
    int indexOf(RowColumn column) const;
    /// Does the column at `position` show prices, quantities or amounts?
    bool isNumber(int position) const;
    /// Text of the hint over a VAT cell, for the key of its rate.
    void setVatHint(std::function<QString(int)> hint) { vatHint_ = std::move(hint); }

    void setRows(QList<DocumentRow> rows);
    void append(const DocumentRow &row);
    void remove(int row);
    /// Swaps a row with the one `step` (-1 or 1) away; false when there is none.
    bool move(int row, int step);
    /// Lets `change` work on all rows and shows the result.
    void updateRows(const std::function<void(QList<DocumentRow> &)> &change);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

Q_SIGNALS:
    /// The user changed a cell.
    void cellEdited(int row);
    /// The user typed something that the cell refuses; `unreadable` for a text that is no number at all.
    void cellRefused(const QString &text, bool unreadable);

private:
    QString shown(const DocumentRow &row, RowColumn column) const;
    double amountOf(const DocumentRow &row) const;
    QVariant exported(const DocumentRow &row, RowColumn column) const;

    QList<RowColumnSpec> columns_;
    QList<DocumentRow> rows_;
    std::function<QString(int)> vatHint_;
};

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
    DocumentGrid(const QList<RowColumnSpec> &columns, QWidget *parent);

    DocumentRowsModel &rowsModel() const { return *model_; }
    /// Row of the current cell, or -1.
    int selectedRow() const;
    void select(int row, RowColumn column);
    bool finishEditing() { return delegate_->finish(); }
    void fitRowHeights();

Q_SIGNALS:
    /// See DocumentRowsDelegate.
    void typing(bool different);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void step(CellStep step);
    QModelIndex editableFrom(const QModelIndex &from, int direction) const;
    void fitColumns();
    int widthOfNumbers(int column) const;

    DocumentRowsModel *model_;
    DocumentRowsDelegate *delegate_;
};
