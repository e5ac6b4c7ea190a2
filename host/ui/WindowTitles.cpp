#include "host/ui/WindowTitles.h"

#include "platform/ui/ChildForm.h"

#include <QTabBar>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString starOf(const ui::ChildForm *form)
{
    return form && form->isUnsaved() ? u" *"_s : QString();
}

QString recordOf(const ui::ChildForm *form)
{
    return form ? form->recordName() : QString();
}

const ui::ChildForm *formOf(const QMdiSubWindow &window)
{
    return qobject_cast<const ui::ChildForm *>(window.widget());
}

QString wholeTitle(const QMdiSubWindow &window)
{
    const ui::ChildForm *form = formOf(window);
    const QString record = recordOf(form);
    const QString caption = window.widget()->windowTitle();
    return (record.isEmpty() ? caption : u"%1 – %2"_s.arg(caption, record)) + starOf(form);
}

QString tabText(const QMdiSubWindow &window)
{
    const ui::ChildForm *form = formOf(window);
    const QString record = recordOf(form);
    QString text = record.isEmpty() ? window.widget()->windowTitle() : record;
    return text.replace(u'&', u"&&"_s) + starOf(form);
}

} // namespace

WindowTitles::WindowTitles(QMdiArea &area)
    : QObject(&area)
    , area_(area)
{
    // Also what turns windows into tabs ends with one of them being activated.
    connect(&area, &QMdiArea::subWindowActivated, this, &WindowTitles::nameTabs);
}

void WindowTitles::follow(QMdiSubWindow &window)
{
    const auto name = [this, &window] {
        const QString title = wholeTitle(window);
        if (title == window.windowTitle())
            return;
        window.setWindowTitle(title);
        nameTabs();
    };
    connect(window.widget(), &QWidget::windowTitleChanged, &window, name);
    if (const auto *form = qobject_cast<ui::ChildForm *>(window.widget()))
        connect(form, &ui::ChildForm::recordNameChanged, &window, name);
    name();
}

// The area has a tab for each window, in the order in which they were made, and names it after the window's title.
void WindowTitles::nameTabs()
{
    auto *tabs = area_.findChild<QTabBar *>({}, Qt::FindDirectChildrenOnly);
    const QList<QMdiSubWindow *> windows = area_.subWindowList(QMdiArea::CreationOrder);
    if (!tabs || tabs->count() != windows.size())
        return;
    for (int i = 0; i < tabs->count(); ++i) {
        if (!windows[i]->widget())
            continue;
        // Even the same text would have all tabs laid out again.
        if (const QString text = tabText(*windows[i]); text != tabs->tabText(i))
            tabs->setTabText(i, text);
        tabs->setTabToolTip(i, windows[i]->windowTitle());
    }
}

} // namespace host
