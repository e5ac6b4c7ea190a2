#pragma once
#include "platform/data/Rows.h"

#include <QAbstractTableModel>
#include <QMap>
#include <QTableView>

#include <functional>

namespace data {
class Connection;
}

namespace ui {

class ListExport;

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
    /// The columns as declared.
    const QList<ListColumn> &columns() const { return columns_; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Numbers are ordered as numbers, dates as dates, texts without case; nulls come first.
    void sort(int column, Qt::SortOrder order) override;

private:
    QString shown(const QVariant &value, ListColumn::Display display) const;
    QVariant exported(const QVariant &value, ListColumn::Display display) const;
    int places(int column) const;
    QVariant alignment(const ListColumn &column) const;

    QString keyField_;
    QList<ListColumn> columns_;
    data::Rows rows_;
    int keyIndex_ = -1;
    QList<int> fieldIndexes_;
    Qt::AlignmentFlag vertical_ = Qt::AlignVCenter;
};

/// A list with whole-row selection. Its columns have their widths until the user drags them; one that takes the rest
/// follows the list's own.
class ResultGrid : public QTableView
{
    Q_OBJECT

public:
    /// An empty list; see RowsModel.
    ResultGrid(const QString &keyField, const QList<ListColumn> &columns, QWidget *parent);

    /// The model behind the list.
    RowsModel &rows() const { return *model_; }
    /// Runs a query with positional values for the key and the shown columns, and shows its rows in their order. Throws
    /// what the database throws; the list then holds the rows that came before the error, and none of an earlier query.
    /// `complete` may change the rows before they are shown.
    void fill(data::Connection &connection, const QString &sql, const QVariantList &values = {},
              const std::function<void(data::Rows &)> &complete = {});
    /// Takes over the rows of a new query; they stand in its order, whatever header was clicked before.
    void setRows(data::Rows rows);
    /// Key of the selected row, or -1.
    int selectedKey() const;
    /// Keys of all selected rows, from the top, where more than one can be selected.
    QList<int> selectedKeys() const;
    /// Selects the row with `key`; false when it is not listed.
    bool selectKey(int key);
    /// Shows texts of several lines from their first one, in rows as high as they need.
    void showLongTexts();
    /// Gives the columns the widths that the user has given them in the list of this name, and keeps those of later on.
    void keepLayout(const QString &list);
    /// Lets a click on a header order the rows.
    void allowSorting();
    /// Value of a field of the selected row; invalid without a row or for a field that the list does not read.
    QVariant selectedValue(const QString &field) const;
    /// The commands that export the rows; the context menu has them, too.
    ListExport &listExport() const { return *export_; }

Q_SIGNALS:
    /// A data row was double-clicked, or Enter pressed on it.
    void chosen();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void prepareHeader();
    void fitColumns();
    QList<int> wantedWidths(int available) const;
    void columnResized(int column, int from, int to);
    void saveLayout();

    RowsModel *model_;
    ListExport *export_;
    bool longTexts_ = false;
    QString list_;             // under this name the widths are kept; nowhere while empty
    QMap<QString, int> given_; // widths that the user gave, by field
    bool fitting_ = false;
    bool dragged_ = false; // since they were kept
};

} // namespace ui
