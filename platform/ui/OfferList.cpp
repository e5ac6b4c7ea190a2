#include "platform/ui/OfferList.h"

#include "platform/ui/Letters.h"
#include <QHeaderView>
#include <QScreen>

namespace ui {

namespace {

constexpr int visibleRows = 10;

Qt::Alignment alignmentOf(const OfferColumn &column)
{
    return Qt::AlignVCenter | (column.number ? Qt::AlignRight : Qt::AlignLeft);
}

} // namespace

OfferList::OfferList(const QList<OfferColumn> &columns, int width, QWidget *parent)
    : QTableWidget(0, static_cast<int>(columns.size()), parent)
    , columns_(columns)
    , listWidth_(width)
{
    setWindowFlags(Qt::ToolTip);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setShowGrid(false);
    setWordWrap(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setVisible(columns.size() > 1);
    for (int position = 0; position < columns.size(); ++position) {
        const OfferColumn &column = columns[position];
        auto *header = new QTableWidgetItem(column.header);
        header->setTextAlignment(alignmentOf(column));
        setHorizontalHeaderItem(position, header);
        horizontalHeader()->setSectionResizeMode(position, column.width ? QHeaderView::Fixed : QHeaderView::Stretch);
        if (column.width)
            setColumnWidth(position, forLetters(column.width, *this));
    }
    connect(this, &QTableWidget::cellClicked, this, &OfferList::picked);
}

void OfferList::offerLines(const QList<QStringList> &lines, const QWidget &field, bool unchosen)
{
    setRowCount(static_cast<int>(lines.size()));
    for (int row = 0; row < lines.size(); ++row) {
        for (int column = 0; column < columns_.size(); ++column) {
            auto *cell = new QTableWidgetItem(lines[row].value(column));
            cell->setTextAlignment(alignmentOf(columns_[column]));
            setItem(row, column, cell);
        }
    }
    if (lines.isEmpty()) {
        hide();
        return;
    }
    if (unchosen)
        setCurrentCell(-1, -1);
    else
        setCurrentCell(0, 0);
    scrollToTop();
    showAt(field);
}

void OfferList::showAt(const QWidget &field)
{
    const int rows = std::min(visibleRows, rowCount());
    const int header = horizontalHeader()->isVisibleTo(this) ? horizontalHeader()->sizeHint().height() : 0;
    const int height = header + rows * verticalHeader()->defaultSectionSize() + 2 * frameWidth();
    const QRect room = field.screen()->availableGeometry();
    const QPoint above = field.mapToGlobal(QPoint());
    QRect place(field.mapToGlobal(QPoint(0, field.height())),
                QSize(std::min(forLetters(listWidth_, *this), room.width()), height));
    // On the side with more room, and never beyond the screen's edge.
    if (place.bottom() > room.bottom() && above.y() - room.top() > room.bottom() - place.top())
        place.setTop(std::max(room.top(), above.y() - height));
    if (place.top() < above.y())
        place.setBottom(above.y() - 1);
    place.setBottom(std::min(place.bottom(), room.bottom()));
    place.moveLeft(std::max(room.left(), std::min(place.left(), room.right() + 1 - place.width())));
    setGeometry(place);
    show();
}

bool OfferList::handle(int key)
{
    const QHash<int, int> steps = {
        {Qt::Key_Down, 1}, {Qt::Key_Up, -1}, {Qt::Key_PageDown, visibleRows}, {Qt::Key_PageUp, -visibleRows}};
    if (!isVisible() || !steps.contains(key))
        return false;
    setCurrentCell(std::clamp(currentRow() + steps[key], 0, rowCount() - 1), 0);
    return true;
}

} // namespace ui
