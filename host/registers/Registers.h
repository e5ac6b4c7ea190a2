#pragma once
#include "platform/ui/RegisterSpec.h"

namespace host {

/// Every register of the host, in the order of the menus.
///@{
const ui::RegisterSpec &articles();
const ui::RegisterSpec &services();
const ui::RegisterSpec &customers();
const ui::RegisterSpec &vatRates();
const ui::RegisterSpec &units();
const ui::RegisterSpec &paymentTypes();
const ui::RegisterSpec &documentNotes();
const ui::RegisterSpec &company();
///@}

} // namespace host
