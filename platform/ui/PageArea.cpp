#include "platform/ui/PageArea.h"

#include <QApplication>

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
    constexpr QSize least(240, 120);
    return sizeHint().boundedTo(least);
}

} // namespace ui
