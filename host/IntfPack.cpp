#include "host/IntfPack.h"

#include "host/Corvane3Impl.h"
#include "platform/core/Error.h"
#include "platform/core/Translation.h"

#include <QMainWindow>
#include <QMenuBar>

#include <deque>

using namespace Qt::StringLiterals;

namespace {

// Libraries register while they load, before main(): the registry must exist at its first use.
std::deque<PackageEntry> registry;

QMenu *hostMenu(const QMenuBar *menuBar, const QString &name)
{
    for (const QAction *action : menuBar->actions()) {
        if (action->menu() && action->menu()->objectName() == name)
            return action->menu();
    }
    return nullptr;
}

// Menus that a module merged something into: a menu of the host's own may be filled only when it opens.
constexpr char merged[] = "merged";

bool holdsNoCommand(const QMenu *menu)
{
    const QList<QAction *> actions = menu->actions();
    return std::all_of(actions.begin(), actions.end(), [](const QAction *action) { return action->isSeparator(); });
}

} // namespace

void RegisterPackage(const QString &fileName, const QString &displayName, const PackageClass &moduleClass)
{
    if (GetPackageIndex(fileName) < 0)
        registry.push_back({fileName, displayName, moduleClass, nullptr});
}

int GetPackageIndex(const QString &fileName)
{
    for (size_t i = 0; i < registry.size(); ++i) {
        if (registry[i].fileName.compare(fileName, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

int GetPackageCount()
{
    return static_cast<int>(registry.size());
}

PackageEntry &GetPackage(int index)
{
    if (index < 0 || index >= GetPackageCount())
        throw core::Error(core::tr("Modulo non registrato."));
    return registry[static_cast<size_t>(index)];
}

QObject *GetPackageInstance(const QString &fileName)
{
    const int index = GetPackageIndex(fileName);
    if (index < 0 || !GetPackage(index).instance)
        throw core::Error(core::tr("Il modulo \"%1\" non è caricato.").arg(fileName));
    return GetPackage(index).instance;
}

void MergeAdvMenuItems(QApplication *, const QString &hostItem, QMenu *menu, bool createMissing)
{
    auto *window = qobject_cast<QMainWindow *>(GetMainForm());
    if (!window)
        return;
    QMenu *target = hostMenu(window->menuBar(), hostItem);
    if (!target) {
        if (!createMissing)
            return;
        target = ui::named(hostItem, new QMenu(menu->title(), window));
        // Before the last top-level menu, which is the help.
        const QList<QAction *> topLevel = window->menuBar()->actions();
        window->menuBar()->insertMenu(topLevel.isEmpty() ? nullptr : topLevel.last(), target);
    }
    if (!target->isEmpty())
        target->addSeparator();
    target->addActions(menu->actions());
    target->menuAction()->setVisible(true);
    target->setProperty(merged, true);
}

void RemoveEmptyMerges()
{
    const auto *window = qobject_cast<QMainWindow *>(GetMainForm());
    if (!window)
        return;
    for (QAction *item : window->menuBar()->actions()) {
        QMenu *menu = item->menu();
        if (!menu || !menu->property(merged).toBool() || !holdsNoCommand(menu))
            continue;
        menu->clear();
        item->setVisible(false);
    }
    for (QToolBar *bar : window->findChildren<QToolBar *>(Qt::FindDirectChildrenOnly)) {
        if (bar->actions().isEmpty())
            bar->hide();
    }
}

void MergeAdvToolBarItems(QApplication *, const TKxToolBarProperties &properties, QToolBar *toolBar)
{
    if (!properties.toolBar)
        return;
    properties.toolBar->addActions(toolBar->actions());
    properties.toolBar->setVisible(true);
}
