#pragma once
#include "platform/data/Rows.h"

#include <QAbstractTableModel>

namespace ui {

class FigureSource;

/// One visible column of a list.
struct ListColumn
{
    enum class Width
    {
        Pixels,
        Rest,
        Percent
    };
    enum class Display
    {
        Text,
        Integer,
        Date,
        Quantity,
        Currency,
        Flag
    };

    QString header;
    QString field;
    int width = 0;
    Width widthKind = Width::Pixels;
    Display display = Display::Text;
    bool redBelowZero = false;
    /// Knows what is shown, by the text of `figuresOf`; without one `field` is a column of the query. While nobody
    /// knows, the list has no such column.
    const FigureSource *figures = nullptr;
    QString figuresOf = {};
};

/// The rows of a query as a read-only table; the key of a row is kept beside it.
class RowsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// `keyField` holds an integer that tells the rows apart.
    RowsModel(QString keyField, QList<ListColumn> columns, QObject *parent);

    /// Takes over the rows; an empty result shows the headers only.
    void setRows(data::Rows rows);
    /// Takes the row with `key` out of the list; does nothing when it is not in it.
    void removeKey(int key);
    /// Draws every cell from its top, for texts of several lines.
    void setTopAligned(bool top) { vertical_ = top ? Qt::AlignTop : Qt::AlignVCenter; }

    /// The columns of a query that the list needs: the key and what it shows.
    QStringList fields() const;
    /// Key of a row, counted from 0 as it is shown.
    int keyAt(int row) const;
    /// Invalid for a field that the list does not read.
    QVariant valueAt(int row, const QString &field) const;
    /// Of the columns that show what somebody else knows.
    QList<const FigureSource *> figureSources() const;
    /// Asks for what is not known yet of the rows from `first` to `last`, in one turn. Throws what the source throws.
    void loadFigures(int first, int last);
    /// They are asked for anew.
    void forgetFigures() { figures_.clear(); }
    /// The columns as declared.
    const QList<ListColumn> &columns() const { return columns_; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Numbers are ordered as numbers, dates as dates, texts without case; nulls come first. Rows that come later are
    /// ordered in the same way. Column -1 stands for the order of the query.
    void sort(int column, Qt::SortOrder order) override;

private:
    static QString shown(const QVariant &value, ListColumn::Display display);
    static QVariant exported(const QVariant &value, ListColumn::Display display);
    int places(int column) const;
    QVariant alignment(const ListColumn &column) const;
    QVariant valueOf(const QModelIndex &index, int role) const;
    void fetchFigures(int column, int first, int last) const;
    const QVariantList &shownRow(int row) const { return rows_.values(order_[row]); }
    void arrange();

    QString keyField_;
    QList<ListColumn> columns_;
    data::Rows rows_;        // in the order of the query
    QList<qsizetype> order_; // which of them is shown where
    int sortColumn_ = -1;
    Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
    int keyIndex_ = -1;
    QList<int> fieldIndexes_;
    Qt::AlignmentFlag vertical_ = Qt::AlignVCenter;
    mutable QHash<std::pair<int, QString>, double> figures_; // by column and text
};

} // namespace ui
