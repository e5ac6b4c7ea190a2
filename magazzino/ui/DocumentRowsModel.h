#pragma once
#include "magazzino/documents/DocumentKind.h"

#include <QAbstractTableModel>

/// Why a number is not taken; an empty text when it is.
struct CellRefusal
{
    QString text;
    bool unreadable = false; ///< it is no number at all
};

/// The rows of a document as an editable table. Columns show and take what the table of row columns says of them; a
/// value out of range is refused and the old one stays.
class DocumentRowsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// No rows yet; the columns are those that `kind` shows.
    DocumentRowsModel(const DocumentKind &kind, QObject *parent);

    /// The rows as they stand in the grid.
    const QList<DocumentRow> &rows() const { return rows_; }
    /// The shown columns from left to right.
    const QList<RowColumn> &columns() const { return columns_; }
    /// Position of the column that shows a member of the rows, or -1.
    int indexOf(const RowMember &member) const;
    /// Shows what `hint` says of a row over its cell in the column of a member.
    void setHint(const RowMember &member, std::function<QString(const DocumentRow &)> hint);

    /// Marks rows, by their positions, and tells why over their cells. The view paints itself anew.
    void setWarnings(const QHash<int, QString> &warnings) { warnings_ = warnings; }

    /// Shows other rows; what stood there is gone.
    void setRows(QList<DocumentRow> rows);
    /// Adds a row behind the others.
    void append(const DocumentRow &row);
    /// Takes out the row at this position, which must be there.
    void remove(int row);
    /// Position of the row with the article, unit price and discount of `row`, or -1.
    int rowLike(const DocumentRow &row) const;
    /// Adds `quantity` to that of a row, as if its sum were typed; false when it is refused.
    bool raiseQuantity(int row, double quantity);
    /// Swaps a row with the one `step` (-1 or 1) away; false when there is none.
    bool move(int row, int step);
    /// Reads what is typed for a number of `row`, a row of the document or one to be; `row` stays as it is when the
    /// number is refused.
    CellRefusal tryNumber(DocumentRow &row, const RowColumn &column, const QString &text) const;
    /// `value` as one types it, with as many of six decimals as it has: a number with more than a cell takes is refused
    /// there instead of being rounded unseen.
    static QString typedNumber(double value);
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
    bool takeNumber(DocumentRow &row, const RowColumn &column, const QString &text);

    UnitPrice unitPrice_;
    QList<RowColumn> columns_;
    QList<DocumentRow> rows_;
    QHash<int, QString> warnings_;
};
