#include "platform/ui/ResultGrid.h"

#include "platform/data/SqlText.h"
#include "platform/ui/ColumnLayout.h"
#include "platform/ui/ListExport.h"
#include "platform/ui/ListFigures.h"

#include <QHeaderView>
#include <QKeyEvent>

namespace ui {

ResultGrid::ResultGrid(const QString &keyField, const QList<ListColumn> &columns, QWidget *parent)
    : QTableView(parent)
    , model_(new RowsModel(keyField, columns, this))
    , export_(new ListExport(this))
{
    setModel(model_);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setTabKeyNavigation(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    layout_ = new ColumnLayout(this, model_);
    if (!model_->figureSources().isEmpty())
        new ListFigures(this, model_);
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex &) { Q_EMIT chosen(); });
}

void ResultGrid::fill(data::Connection &connection, const QString &sql, const QVariantList &values,
                      const std::function<void(data::Rows &)> &complete)
{
    data::Rows rows;
    const auto show = qScopeGuard([this, &rows] { setRows(std::move(rows)); });
    connection.selectInto(rows, data::limitedTo(model_->fields(), sql), values);
    if (complete)
        complete(rows);
}

void ResultGrid::setRows(data::Rows rows)
{
    model_->setRows(std::move(rows));
    if (longTexts_)
        resizeRowsToContents();
}

void ResultGrid::showLongTexts()
{
    longTexts_ = true;
    setWordWrap(true);
    verticalHeader()->setDefaultSectionSize(3 * fontMetrics().height());
    model_->setTopAligned(true);
}

int ResultGrid::selectedKey() const
{
    const QModelIndexList selected = selectionModel()->selectedRows();
    return selected.isEmpty() ? -1 : model_->keyAt(selected.first().row());
}

QList<int> ResultGrid::selectedKeys() const
{
    QList<int> keys;
    for (int row = 0; row < model_->rowCount(); ++row) {
        if (selectionModel()->isRowSelected(row))
            keys.append(model_->keyAt(row));
    }
    return keys;
}

bool ResultGrid::selectKey(int key)
{
    for (int row = 0; row < model_->rowCount(); ++row) {
        if (model_->keyAt(row) == key) {
            selectRow(row);
            return true;
        }
    }
    return false;
}

void ResultGrid::allowSorting()
{
    horizontalHeader()->setSortIndicatorClearable(true);
    setSortingEnabled(true);
}

QVariant ResultGrid::selectedValue(const QString &field) const
{
    const QModelIndexList selected = selectionModel()->selectedRows();
    return selected.isEmpty() ? QVariant() : model_->valueAt(selected.first().row(), field);
}

void ResultGrid::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    layout_->fit();
}

void ResultGrid::keyPressEvent(QKeyEvent *event)
{
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && selectedKey() > 0) {
        Q_EMIT chosen();
        return;
    }
    // A list that merely has the focus holds the first row as its current one, and Down would pass over it.
    if (event->key() == Qt::Key_Down && selectedKey() < 0 && model_->rowCount() > 0) {
        selectRow(0);
        return;
    }
    QTableView::keyPressEvent(event);
}

} // namespace ui
