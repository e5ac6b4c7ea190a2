#include "platform/ui/ResultGrid.h"

#include "platform/data/SqlText.h"
#include "platform/ui/ColumnLayout.h"
#include "platform/ui/ListCells.h"
#include "platform/ui/ListExport.h"
#include "platform/ui/ListFigures.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>

namespace ui {

ResultGrid::ResultGrid(const QString &keyField, const QList<ListColumn> &columns, QWidget *parent)
    : QTableView(parent)
    , model_(new RowsModel(keyField, columns, this))
    , export_(new ListExport(this))
{
    setModel(model_);
    // The columns stay, whatever rows there are: the header need not be drawn with each search.
    disconnect(model_, SIGNAL(modelReset()), horizontalHeader(), SLOT(reset()));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    // See paintEvent(). The view fills all of its ground first and then each cell of every second row, and its lines
    // are drawn with a pen, point by point.
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    setGridStyle(Qt::NoPen);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setItemDelegate(new ListCells(this));
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

void ResultGrid::paintEvent(QPaintEvent *event)
{
    paintGround(event->rect());
    QTableView::paintEvent(event);
    paintLines(event->rect());
}

QRect ResultGrid::cells() const
{
    const int width = horizontalHeader()->length() - horizontalHeader()->offset();
    const int height = verticalHeader()->length() - verticalHeader()->offset();
    return {isRightToLeft() ? viewport()->width() - width : 0, 0, width, height};
}

int ResultGrid::lastRowIn(const QRect &area) const
{
    const int row = rowAt(area.bottom());
    return row < 0 ? model_->rowCount() - 1 : row;
}

void ResultGrid::paintGround(const QRect &area)
{
    QPainter painter(viewport());
    const QPalette &colours = viewport()->palette();
    const QRect rows = area.intersected(cells());
    for (int row = rowAt(rows.top()), last = lastRowIn(rows); !rows.isEmpty() && row <= last; ++row)
        painter.fillRect(rows.left(), rowViewportPosition(row), rows.width(), rowHeight(row),
                         ListCells::ground(colours, row));
    for (const QRect &rest : QRegion(area).subtracted(rows))
        painter.fillRect(rest, colours.color(QPalette::Base));
}

void ResultGrid::paintLines(const QRect &area)
{
    const QRect rows = area.intersected(cells());
    if (rows.isEmpty())
        return;
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    const int rgb = style()->styleHint(QStyle::SH_Table_GridLineColor, &option, this);
    const QColor colour = QColor::fromRgba(static_cast<QRgb>(rgb));
    QPainter painter(viewport());
    for (int row = rowAt(rows.top()), last = lastRowIn(rows); row <= last; ++row)
        painter.fillRect(rows.left(), rowViewportPosition(row) + rowHeight(row) - 1, rows.width(), 1, colour);
    for (int column = 0; column < model_->columnCount(); ++column) {
        const int edge = columnViewportPosition(column) + (isRightToLeft() ? 0 : columnWidth(column) - 1);
        if (!isColumnHidden(column))
            painter.fillRect(edge, rows.top(), 1, rows.height(), colour);
    }
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
