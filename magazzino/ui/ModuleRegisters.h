#pragma once
#include "platform/ui/RegisterSpec.h"

/// The module's registers: suppliers, carriers, transport types, transport reasons.
///@{
const ui::RegisterSpec &suppliers();
const ui::RegisterSpec &carriers();
const ui::RegisterSpec &transportTypes();
const ui::RegisterSpec &transportReasons();
///@}
