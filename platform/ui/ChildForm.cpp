#include "platform/ui/ChildForm.h"

#include "platform/core/Messages.h"

#include <QActionEvent>
#include <QCloseEvent>
#include <QMdiSubWindow>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

/// Tab reaches those of its buttons that no key stands for.
class CommandBar : public QToolBar
{
public:
    using QToolBar::QToolBar;

protected:
    void actionEvent(QActionEvent *event) override
    {
        QToolBar::actionEvent(event);
        if (event->type() != QEvent::ActionAdded || !event->action()->shortcut().isEmpty())
            return;
        if (auto *button = qobject_cast<QToolButton *>(widgetForAction(event->action())))
            button->setFocusPolicy(Qt::TabFocus);
    }
};

} // namespace

ChildForm::ChildForm(const QString &caption, const QString &menuCaption, QWidget *parent)
    : QWidget(parent)
    , menu_(new QMenu(menuCaption, this))
{
    setWindowTitle(caption);
    setOnClose(OnClose::Free);
}

QAction *ChildForm::command(const QString &name) const
{
    // An empty name would find just any action.
    return name.isEmpty() ? nullptr : findChild<QAction *>(name, Qt::FindDirectChildrenOnly);
}

void ChildForm::closeForm()
{
    if (auto *window = qobject_cast<QMdiSubWindow *>(parentWidget()))
        window->close();
    else
        close();
}

QAction *ChildForm::addCommand(const Command &command)
{
    auto *action = named(command.name, new QAction(icon(command.icon), command.caption, this));
    action->setShortcut(command.shortcut);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    // A hint of its own stands alone; the menus and the page of the keys have the key as well.
    const QString key = command.shortcut.toString(QKeySequence::NativeText);
    if (!command.hint.isEmpty())
        action->setToolTip(command.hint);
    else
        action->setToolTip(key.isEmpty() ? command.caption : u"%1 (%2)"_s.arg(command.caption, key));
    action->setStatusTip(command.hint);
    connect(action, &QAction::triggered, this, [this, run = command.run] { core::guarded(this, run); });
    addAction(action);
    return action;
}

void ChildForm::placeCommands(QToolBar *bar, const QStringList &names, const QStringList &menuNames)
{
    const auto place = [this](QWidget *target, const QStringList &commands) {
        for (const QString &name : commands) {
            QAction *action = command(name);
            if (!action) {
                action = new QAction(target);
                action->setSeparator(true);
            }
            target->addAction(action);
        }
    };
    place(bar, names);
    place(menu_, menuNames.isEmpty() ? names : menuNames);
}

QPushButton *ChildForm::commandButton(QAction *action, const QString &name, QWidget *parent)
{
    auto *button = named(name, new QPushButton(action->icon(), action->text(), parent));
    button->setToolTip(action->toolTip());
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::changed, button, [button, action] {
        button->setEnabled(action->isEnabled());
        button->setToolTip(action->toolTip());
    });
    return button;
}

QToolBar *ChildForm::newToolBar(const QString &name)
{
    auto *bar = named(name, new CommandBar(this));
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->setIconSize({16, 16});
    bar->setMovable(false);
    return bar;
}

void ChildForm::closeEvent(QCloseEvent *event)
{
    bool may = false;
    // When the question itself fails, the window stays: nothing typed may be lost.
    core::guarded(this, [this, &may] { may = mayClose(); });
    event->setAccepted(may);
}

} // namespace ui
