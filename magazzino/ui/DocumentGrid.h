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

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    mutable QPointer<QWidget> editor_;
    mutable bool refused_ = false;
};

/// The rows grid: column widths follow its own, rows grow with their description.
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

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void fitColumns();

    DocumentRowsModel *model_;
    DocumentRowsDelegate *delegate_;
};
