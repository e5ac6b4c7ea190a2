#pragma once
#include "platform/ui/Filter.h"

/// A filter on what became of electronic invoices; `colonna` is the state's expression in the list's query.
ui::ListFilter statoFilter(const QString &colonna);
