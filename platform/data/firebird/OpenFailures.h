#pragma once
#include "platform/data/DatabaseFile.h"
#include "platform/data/firebird/Status.h"

namespace data::firebird {

/// Why a database did not open.
OpenFailure openFailure(const Status &status, bool embedded);

} // namespace data::firebird
