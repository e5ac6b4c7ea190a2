#pragma once
#include "platform/ui/CommandRegistry.h"

/// All actions of the module, in the order of its action list.
const QList<ui::ActionSpec> &moduleActions();
