#pragma once
#include "host/StartOffers.h"
#include "platform/data/Connection.h"

namespace host {

/// What the host has for the start page; `connection` must outlive it.
StartOffer hostOffer(data::Connection &connection);

} // namespace host
