#include "platform/ui/CommandRegistry.h"

#include "platform/core/Error.h"
#include "platform/core/Messages.h"
#include "platform/core/Translation.h"
#include "platform/ui/Dialogs.h"
#include "platform/ui/EntryForm.h"

#include <QDialog>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

QList<CommandRegistry *> registries;

} // namespace

CommandRegistry::CommandRegistry(Surroundings surroundings, QObject *parent, QObject *actionOwner)
    : QObject(parent)
    , surroundings_(std::move(surroundings))
    , actionOwner_(actionOwner ? actionOwner : this)
{
    registries.append(this);
}

CommandRegistry::~CommandRegistry()
{
    registries.removeOne(this);
    for (const QPointer<QWidget> &form : std::as_const(forms_))
        delete form;
}

QAction *CommandRegistry::add(const ActionSpec &spec)
{
    auto *action = named(spec.name, new QAction(spec.caption, actionOwner_));
    action->setProperty("category", spec.category);
    action->setEnabled(spec.create || spec.run);
    connect(action, &QAction::triggered, this,
            [this, spec] { core::guarded(surroundings_.owner, [&] { execute(spec); }); });
    return action;
}

CommandRegistry *CommandRegistry::having(const QString &action)
{
    for (CommandRegistry *registry : std::as_const(registries)) {
        if (registry->action(action))
            return registry;
    }
    return nullptr;
}

QAction *CommandRegistry::action(const QString &name) const
{
    return actionOwner_->findChild<QAction *>(name, Qt::FindDirectChildrenOnly);
}

QWidget *CommandRegistry::openForm(const QString &actionName)
{
    action(actionName)->trigger();
    return forms_.value(actionName);
}

EntryForm &CommandRegistry::entryForm(const QString &actionName)
{
    auto *form = qobject_cast<EntryForm *>(openForm(actionName));
    if (!form)
        throw core::Error(core::tr("La maschera di inserimento non è disponibile."));
    return *form;
}

void CommandRegistry::execute(const ActionSpec &spec)
{
    if (!spec.right.isEmpty() && !surroundings_.grants(spec.right))
        return;
    if (spec.kind == ActionKind::Routine) {
        spec.run(surroundings_.owner);
        return;
    }
    QWidget *form = formOf(spec);
    if (spec.kind == ActionKind::Form)
        surroundings_.show(form);
    if (spec.kind == ActionKind::Report && runModal(*qobject_cast<QDialog *>(form)) == QDialog::Accepted)
        spec.run(form);
}

QWidget *CommandRegistry::formOf(const ActionSpec &spec)
{
    // By value: a form that is made may open others, and with them the hash moves.
    QPointer<QWidget> form = forms_.value(spec.name);
    if (!form) {
        form = spec.create(surroundings_.owner);
        if (auto *entry = qobject_cast<EntryForm *>(form))
            entry->setCommandName(spec.name);
        forms_.insert(spec.name, form);
        Q_EMIT formMade(form);
    }
    return form;
}

} // namespace ui
