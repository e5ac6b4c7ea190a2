#include "platform/ui/KeyList.h"

#include "platform/core/Translation.h"
#include "platform/ui/ChildForm.h"
#include "platform/ui/PlaceKeys.h"

#include <QAction>
#include <QMainWindow>
#include <QMdiSubWindow>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

bool isInChildWindow(const QObject &object, const QWidget &window)
{
    for (const QObject *around = &object; around && around != &window; around = around->parent()) {
        if (qobject_cast<const ChildForm *>(around) || qobject_cast<const QMdiSubWindow *>(around) ||
            (around->isWidgetType() && static_cast<const QWidget *>(around)->windowType() == Qt::Dialog))
            return true;
    }
    return false;
}

// In the main window those that serve one control alone are no keys of everywhere.
bool isKeyOf(const QAction &action, const QWidget &window)
{
    if (action.shortcut().isEmpty() || isInChildWindow(action, window))
        return false;
    return !qobject_cast<const QMainWindow *>(&window) || action.shortcutContext() == Qt::WindowShortcut ||
           action.shortcutContext() == Qt::ApplicationShortcut;
}

} // namespace

QList<KeyUse> keysOf(const QWidget &window)
{
    QList<KeyUse> uses;
    for (const QAction *action : window.findChildren<QAction *>()) {
        // Each list of a window copies with the same key.
        const KeyUse use{action->text().remove(u'&'), action->shortcut()};
        if (isKeyOf(*action, window) && !uses.contains(use))
            uses.append(use);
    }
    if (qobject_cast<const QMainWindow *>(&window))
        return uses;
    for (const PlaceKey &place : placeKeys(window))
        uses.append(
            {(place.page < 0 ? core::tr("Campo \"%1\"") : core::tr("Pagina \"%1\"")).arg(place.caption), place.key});
    return uses;
}

} // namespace ui
