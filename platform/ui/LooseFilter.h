#pragma once
#include "platform/ui/Filter.h"

namespace ui {

/// The condition that stands for a text in a list's query.
using TextCondition = std::function<QString(const QString &text, data::Values &values)>;

/// containingLoosely(), or a text for which the condition `other` holds.
ListFilter containingLooselyOr(const QString &name, const QString &label, const QString &column,
                               const TextCondition &other);

} // namespace ui
