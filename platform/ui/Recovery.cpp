#include "platform/ui/Recovery.h"

namespace ui {

Recovery &Recovery::of(data::Connection &connection)
{
    auto *found = connection.findChild<Recovery *>(QString(), Qt::FindDirectChildrenOnly);
    return found ? *found : *new Recovery(&connection);
}

void Recovery::keep(const QString &form, const FormContents &contents)
{
    kept_.insert(form, contents);
    Q_EMIT changed();
}

void Recovery::forget(const QString &form)
{
    if (kept_.remove(form))
        Q_EMIT changed();
}

} // namespace ui
