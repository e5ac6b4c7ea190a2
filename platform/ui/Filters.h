#pragma once
#include "platform/ui/Filter.h"

#include <QDate>

/// The kinds of filters that lists have in common. `before` and `after` are the text of the condition around the value.
namespace ui {

/// A text; every row fits an empty one.
ListFilter textFilter(const QString &name, const QString &label, const QString &before, const QString &after = {});
/// A text that stands anywhere in `column`, whatever its case, and is taken literally.
ListFilter containing(const QString &name, const QString &label, const QString &column);
/// The same whatever its accents, too, and without the blanks around it.
ListFilter containingLoosely(const QString &name, const QString &label, const QString &column);
/// A year, the current one at first.
ListFilter yearFilter(const QString &name, const QString &label, const QString &before);
/// A date, at first the one that `first` gives.
ListFilter dateFilter(const QString &name, const QString &label, const QString &before, const QString &after,
                      const std::function<QDate()> &first);

} // namespace ui
