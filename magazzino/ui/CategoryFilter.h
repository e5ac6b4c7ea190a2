#pragma once
#include "host/Categories.h"
#include "platform/ui/Filter.h"

/// A category of `categories` and everything below it, compared with the qualified `column` of the query. The tree is
/// read at every reset.
ui::ListFilter categoryFilter(const ui::CategoryTable &categories, const QString &column);
