#include "platform/ui/PageArea.h"

#include <QApplication>
#include <QScrollBar>

namespace ui {

PageArea::PageArea(QWidget *parent)
    : QScrollArea(parent)
{
    setWidget(new QWidget);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    widget()->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        if (now && widget()->isAncestorOf(now))
            ensureWidgetVisible(now);
    });
}

QSize PageArea::minimumSizeHint() const
{
    // Contents of usual width never scroll sideways, not even beside the bar that scrolls downwards.
    constexpr QSize least(640, 200);
    return (sizeHint() + QSize(verticalScrollBar()->sizeHint().width(), 0)).boundedTo(least);
}

} // namespace ui
