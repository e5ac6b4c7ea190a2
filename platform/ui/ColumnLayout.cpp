#include "platform/ui/ColumnLayout.h"

#include "platform/core/Lists.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/ui/Letters.h"
#include "platform/ui/RowsModel.h"

#include <QAction>
#include <QEvent>
#include <QHeaderView>
#include <QScopedValueRollback>

#include <numeric>

using namespace Qt::StringLiterals;

namespace ui {

// Of a column that the user drags, or that makes room for such a one.
constexpr int leastWidth = 30;

ColumnLayout::ColumnLayout(QTableView *grid, RowsModel *model)
    : QObject(grid)
    , grid_(grid)
    , model_(model)
{
    QHeaderView *header = grid_->horizontalHeader();
    header->setHighlightSections(false);
    header->setMinimumSectionSize(leastWidth / 3);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    header->viewport()->installEventFilter(this);
    connect(header, &QHeaderView::sectionResized, this, &ColumnLayout::columnResized);
    addCommand(u"actLarghezzeOriginali"_s, core::tr("Larghezze originali delle colonne"), &ColumnLayout::dropWidths);
    header->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void ColumnLayout::addCommand(const QString &name, const QString &caption, void (ColumnLayout::*run)())
{
    auto *action = new QAction(caption, grid_->horizontalHeader());
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, run);
    connect(action, &QAction::triggered, this, &ColumnLayout::save);
    grid_->horizontalHeader()->addAction(action);
}

void ColumnLayout::dropWidths()
{
    given_.clear();
    fit();
}

void ColumnLayout::dropOrder()
{
    show(declaredFields());
}

// Declared or given widths first, per cents of the whole, and what is left to the column that takes the rest.
QList<int> ColumnLayout::wantedWidths(int available) const
{
    constexpr int leastRest = 120;
    QList<int> widths;
    qsizetype rest = -1;
    for (const ListColumn &column : model_->columns()) {
        const bool isPercent = column.widthKind == ListColumn::Width::Percent;
        const int declared = isPercent ? qRound(available * column.width / 100.0) : forLetters(column.width, *grid_);
        if (column.widthKind == ListColumn::Width::Rest)
            rest = widths.size();
        widths.append(column.widthKind == ListColumn::Width::Rest ? 0 : given_.value(column.field, declared));
    }
    if (rest >= 0)
        widths[rest] = std::max(available - std::accumulate(widths.begin(), widths.end(), 0), leastRest);
    return widths;
}

// Where the widths leave nothing, columns shrink in proportion, at first those that the user gave no width: a list
// never scrolls sideways.
void ColumnLayout::fit()
{
    const int available = grid_->viewport()->width();
    const QList<int> widths = wantedWidths(available);
    const int total = std::accumulate(widths.begin(), widths.end(), 0);
    const int given = std::accumulate(given_.begin(), given_.end(), 0);
    const bool spare = available - given >= leastWidth * (widths.size() - given_.size());
    const qint64 room = spare ? available - given : available;
    const int wanted = spare ? total - given : total;
    const QScopedValueRollback fitting(fitting_, true);
    for (int i = 0; i < widths.size(); ++i) {
        const bool fits = total <= available || wanted <= 0 || (spare && given_.contains(model_->columns()[i].field));
        grid_->setColumnWidth(i, fits ? widths[i] : static_cast<int>(widths[i] * room / wanted));
    }
}

// What the user drags. Behind the column that takes the rest it is the next one's width that changes.
void ColumnLayout::columnResized(int column, int from, int to)
{
    if (fitting_)
        return;
    const QList<ListColumn> &columns = model_->columns();
    int width = to;
    if (columns[column].widthKind == ListColumn::Width::Rest) {
        const QHeaderView *header = grid_->horizontalHeader();
        column = header->logicalIndex(header->visualIndex(column) + 1);
        width = grid_->columnWidth(column) + from - to;
    }
    if (column >= 0) {
        // At most so wide that the others keep a third of theirs.
        const int available = grid_->viewport()->width();
        const QList<int> widths = wantedWidths(available);
        const int others = std::accumulate(widths.begin(), widths.end(), -widths[column]);
        const int most = std::max(available - others / 3, leastWidth);
        given_.insert(columns[column].field, std::clamp(width, leastWidth, most));
    }
    fit();
}

// A drag or click ends with the mouse button; the header knows what came of it once it has handled that.
bool ColumnLayout::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease)
        QMetaObject::invokeMethod(this, &ColumnLayout::save, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

int ColumnLayout::columnOf(const QString &field) const
{
    return static_cast<int>(declaredFields().indexOf(field));
}

QStringList ColumnLayout::declaredFields() const
{
    return core::mapped(model_->columns(), &ListColumn::field);
}

QStringList ColumnLayout::fieldsFromLeft() const
{
    const QHeaderView *header = grid_->horizontalHeader();
    QStringList fields;
    for (int place = 0; place < header->count(); ++place)
        fields.append(model_->columns()[header->logicalIndex(place)].field);
    return fields;
}

void ColumnLayout::show(const QStringList &fieldsFromLeft)
{
    QHeaderView *header = grid_->horizontalHeader();
    int place = 0;
    for (const QString &field : fieldsFromLeft) {
        if (const int column = columnOf(field); column >= 0)
            header->moveSection(header->visualIndex(column), place++);
    }
}

void ColumnLayout::keep(const QString &list)
{
    list_ = list;
    kept_ = keptLayout(list);
    for (const ListColumn &column : model_->columns()) {
        if (column.widthKind != ListColumn::Width::Rest && kept_.widths.contains(column.field))
            given_.insert(column.field, kept_.widths[column.field]);
    }
    fit();
    QHeaderView *header = grid_->horizontalHeader();
    header->setSectionsMovable(true);
    addCommand(u"actOrdineOriginale"_s, core::tr("Ordine originale delle colonne"), &ColumnLayout::dropOrder);
    show(kept_.order);
    header->setSortIndicator(columnOf(kept_.sortedBy), kept_.sortOrder);
}

void ColumnLayout::save()
{
    if (list_.isEmpty())
        return;
    const QHeaderView *header = grid_->horizontalHeader();
    const int sorted = header->sortIndicatorSection();
    const QStringList order = fieldsFromLeft();
    const ListLayout now = {.widths = given_,
                            .order = order == declaredFields() ? QStringList() : order,
                            .sortedBy = sorted < 0 ? QString() : model_->columns()[sorted].field,
                            .sortOrder = header->sortIndicatorOrder()};
    if (now == std::exchange(kept_, now))
        return;
    core::guarded(grid_, [this] { keepLayout(list_, kept_); });
}

} // namespace ui
