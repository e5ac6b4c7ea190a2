#include "platform/ui/ListFigures.h"

#include "platform/core/Log.h"
#include "platform/ui/CallAfter.h"
#include "platform/ui/FigureSource.h"
#include "platform/ui/RowsModel.h"

#include <QEvent>
#include <QHeaderView>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

constexpr int standingStill = 150; // ms

} // namespace

ListFigures::ListFigures(QTableView *view, RowsModel *model)
    : QObject(view)
    , view_(view)
    , model_(model)
{
    callAfter(later_, standingStill, this, &ListFigures::load);
    const auto wait = [this] { later_.start(); };
    connect(view->verticalScrollBar(), &QScrollBar::valueChanged, this, wait);
    connect(model, &QAbstractItemModel::modelReset, this, wait);
    connect(model, &QAbstractItemModel::layoutChanged, this, wait);
    connect(model, &QAbstractItemModel::rowsRemoved, this, wait);
    connect(view->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this, &ListFigures::dropSorting,
            Qt::QueuedConnection);
    for (const FigureSource *source : model->figureSources()) {
        connect(source, &FigureSource::changed, this, [this] {
            stale_ = true;
            later_.start();
        });
    }
    view->installEventFilter(this);
}

bool ListFigures::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show || event->type() == QEvent::Resize)
        later_.start();
    return QObject::eventFilter(watched, event);
}

void ListFigures::load()
{
    const int first = view_->rowAt(0);
    if (first < 0 || !view_->isVisible())
        return;
    const int last = view_->rowAt(view_->viewport()->height() - 1);
    if (std::exchange(stale_, false))
        model_->forgetFigures();
    try {
        model_->loadFigures(first, last < 0 ? model_->rowCount() - 1 : last);
    } catch (const std::exception &error) {
        // The list stands without them.
        core::logError(u"cifre di un elenco"_s, error);
    }
}

// Nobody knows the figures of the rows that are out of view.
void ListFigures::dropSorting(int column)
{
    if (column >= 0 && model_->columns()[column].figures)
        view_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
}

} // namespace ui
