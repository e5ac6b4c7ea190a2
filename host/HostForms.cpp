#include "host/HostForms.h"

#include "host/Corvane3Impl.h"
#include "platform/ui/CommandRegistry.h"

QWidget *OpenHostForm(const QString &action)
{
    const QWidget *mainForm = GetMainForm();
    auto *commands = mainForm ? mainForm->findChild<ui::CommandRegistry *>({}, Qt::FindDirectChildrenOnly) : nullptr;
    return commands && commands->action(action) ? commands->openForm(action) : nullptr;
}
