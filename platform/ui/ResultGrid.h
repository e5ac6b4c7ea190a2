#pragma once
#include "platform/data/Connection.h"
#include "platform/ui/RowsModel.h"

#include <QTableView>

#include <functional>

namespace ui {

class ColumnLayout;
class ListExport;

/// A list with whole-row selection.
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
    /// Takes over the rows of a new query, in its order unless the user ordered the list by a column.
    void setRows(data::Rows rows);
    /// Key of the selected row, or -1.
    int selectedKey() const;
    /// Keys of all selected rows, from the top, where more than one can be selected.
    QList<int> selectedKeys() const;
    /// Selects the row with `key`; false when it is not listed.
    bool selectKey(int key);
    /// Shows texts of several lines from their first one, in rows as high as they need.
    void showLongTexts();
    /// Lets a click on a header order the rows, the next one turn it round, the third one bring the query's order back.
    void allowSorting();
    /// How its columns stand.
    ColumnLayout &columnLayout() const { return *layout_; }
    /// Value of a field of the selected row; invalid without a row or for a field that the list does not read.
    QVariant selectedValue(const QString &field) const;
    /// The commands that export the rows; the context menu has them, too.
    ListExport &listExport() const { return *export_; }

Q_SIGNALS:
    /// A data row was double-clicked, or Enter pressed on it.
    void chosen();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void paintGround(const QRect &area);
    void paintLines(const QRect &area);
    QRect cells() const;
    int lastRowIn(const QRect &area) const;

    RowsModel *model_;
    ColumnLayout *layout_ = nullptr;
    ListExport *export_;
    bool longTexts_ = false;
};

} // namespace ui
