#pragma once
#include <QScrollArea>

namespace ui {

/// A column in `whole` that gets no wider than lines of inputs can be taken in at a glance; `whole` has no layout yet.
QWidget *narrowColumn(QWidget *whole);

/// A page of a form that scrolls where there is no room for its contents, after the control with the focus. It asks
/// for as much room as they need, and lies in the page without a frame or colour of its own.
class PageArea : public QScrollArea
{
    Q_OBJECT

public:
    explicit PageArea(QWidget *parent);

    QSize sizeHint() const override { return widget()->minimumSizeHint(); }
    QSize minimumSizeHint() const override;
};

} // namespace ui
