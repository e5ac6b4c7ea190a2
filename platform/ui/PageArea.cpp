#include "platform/ui/PageArea.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QScrollBar>

namespace ui {

QWidget *narrowColumn(QWidget *whole)
{
    constexpr int characters = 120;
    constexpr int all = 1000; // of what room there is, until the column is that wide
    auto *column = new QWidget(whole);
    column->setMaximumWidth(whole->fontMetrics().horizontalAdvance(QString(characters, u'0')));
    auto *line = new QHBoxLayout(whole);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(0);
    line->addWidget(column, all);
    line->addStretch(1);
    return column;
}

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
