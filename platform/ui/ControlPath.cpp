#include "platform/ui/ControlPath.h"

#include <QScrollArea>
#include <QTabWidget>

namespace ui {

namespace {

void turnToPage(QTabWidget &pages, const QWidget &control)
{
    for (int page = 0; page < pages.count(); ++page) {
        if (pages.widget(page)->isAncestorOf(&control))
            pages.setCurrentIndex(page);
    }
}

} // namespace

bool showControl(QWidget &form, const QString &name)
{
    auto *control = form.findChild<QWidget *>(name);
    if (!control)
        return false;
    for (QWidget *above = control->parentWidget(); above && above != &form; above = above->parentWidget()) {
        if (auto *pages = qobject_cast<QTabWidget *>(above))
            turnToPage(*pages, *control);
    }
    control->setFocus(Qt::OtherFocusReason);
    for (QWidget *above = control->parentWidget(); above && above != &form; above = above->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(above))
            area->ensureWidgetVisible(control);
    }
    return true;
}

} // namespace ui
