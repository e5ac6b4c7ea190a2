#include "host/ui/ChildArea.h"

#include "host/ui/WindowTitles.h"
#include "platform/ui/AccessibleNames.h"
#include "platform/ui/CallAfter.h"
#include "platform/ui/WindowPlaces.h"

#include <QEvent>
#include <QMdiSubWindow>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

ChildArea::ChildArea(QWidget *parent)
    : QMdiArea(parent)
    , titles_(new WindowTitles(*this))
{
    setActivationOrder(ActivationHistoryOrder);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setDocumentMode(true);
    setTabsClosable(true);
    setTabsMovable(true);
    setBackground(palette().color(QPalette::Window));
    setFree(false);
    connect(this, &QMdiArea::subWindowActivated, this, &ChildArea::fillWith);
    ui::callAfter(hidden_, 0, this, &ChildArea::followHidden);
}

// The area fills its background with a colour of its own.
void ChildArea::changeEvent(QEvent *event)
{
    QMdiArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        setBackground(palette().color(QPalette::Window));
}

void ChildArea::setFree(bool free)
{
    // Left to itself the area would show windows that are hidden, to make them smaller.
    setOption(DontMaximizeSubWindowOnActivation, !free);
    setViewMode(free ? SubWindowView : TabbedView);
    if (QTabBar *bar = tabBar()) {
        bar->setObjectName(u"tabFinestre"_s);
        bar->setElideMode(Qt::ElideRight);
        bar->setExpanding(false);
        showTabs();
        fillWith(activeSubWindow());
        return;
    }
    // Each of the tabs filled the area; the one that gets its size last would be in front.
    QMdiSubWindow *active = activeSubWindow();
    for (QMdiSubWindow *window : subWindowList()) {
        if (window->isVisible() && window->isMaximized())
            window->showNormal();
    }
    setActiveSubWindow(active);
}

void ChildArea::fillWith(QMdiSubWindow *window) const
{
    if (window && !isFree() && !window->isMaximized())
        window->showMaximized();
}

// The area makes a new one each time the windows become tabs.
QTabBar *ChildArea::tabBar() const
{
    return findChild<QTabBar *>(QString(), Qt::FindDirectChildrenOnly);
}

// The area keeps a tab for a window that is hidden, and gives each the program's own icon.
void ChildArea::showTabs()
{
    QTabBar *bar = tabBar();
    if (!bar)
        return;
    const QList<QMdiSubWindow *> windows = subWindowList();
    for (int i = 0; i < std::min(static_cast<int>(windows.size()), bar->count()); ++i) {
        const QSignalBlocker quiet(bar);
        // Each call lays out all of them again, even when it changes nothing.
        if (bar->isTabVisible(i) == windows[i]->isHidden())
            bar->setTabVisible(i, !windows[i]->isHidden());
        if (!bar->tabIcon(i).isNull())
            bar->setTabIcon(i, {});
    }
}

void ChildArea::showChild(QWidget *form)
{
    auto *window = qobject_cast<QMdiSubWindow *>(form->parentWidget());
    if (!window)
        window = addChild(form);
    ui::nameControls(*form);
    form->show();
    window->show();
    showTabs();
    if (window->isMinimized())
        window->showNormal();
    setActiveSubWindow(window);
    window->raise();
    form->setFocus();
}

QMdiSubWindow *ChildArea::addChild(QWidget *form)
{
    const QSize wanted = form->sizeHint();
    QMdiSubWindow *window = addSubWindow(form);
    window->setAttribute(Qt::WA_DeleteOnClose, form->testAttribute(Qt::WA_DeleteOnClose));
    window->setWindowIcon(parentWidget()->windowIcon());
    // Room for the frame, and never larger than the area that is there.
    const QSize frame = window->size() - window->contentsRect().size();
    window->resize((wanted + frame).boundedTo(viewport()->size()));
    titles_->follow(*window);
    ui::keepPlace(window, form->objectName());
    return window;
}

// A window hides for a moment, too, while it becomes a tab, so what follows waits.
bool ChildArea::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Hide && qobject_cast<QMdiSubWindow *>(watched))
        hidden_.start();
    return QMdiArea::eventFilter(watched, event);
}

// The area looks for the next window when one goes, not when one hides.
void ChildArea::followHidden()
{
    const QMdiSubWindow *active = activeSubWindow();
    QMdiSubWindow *last = !active || active->isHidden() ? lastUsed() : nullptr;
    if (last)
        setActiveSubWindow(last);
    showTabs();
}

// Of those in sight.
QMdiSubWindow *ChildArea::lastUsed(const QObject *except) const
{
    const QList<QMdiSubWindow *> used = subWindowList(ActivationHistoryOrder);
    const auto last = std::find_if(used.rbegin(), used.rend(), [except](const QMdiSubWindow *window) {
        return window != except && window->isVisible();
    });
    return last == used.rend() ? nullptr : *last;
}

// While a tab goes, the area lays out its windows by a history that still counts the one that has gone, and so reads
// past the end of their list. Meanwhile it goes by the order in which they were made.
bool ChildArea::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ChildRemoved)
        return QMdiArea::viewportEvent(event);
    const QObject *removed = static_cast<QChildEvent *>(event)->child();
    QMdiSubWindow *next = activeSubWindow() == removed ? lastUsed(removed) : nullptr;
    setActivationOrder(CreationOrder);
    const bool result = QMdiArea::viewportEvent(event);
    setActivationOrder(ActivationHistoryOrder);
    if (next)
        setActiveSubWindow(next);
    return result;
}

} // namespace host
