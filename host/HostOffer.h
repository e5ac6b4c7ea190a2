#pragma once
#include "host/StartOffers.h"

namespace data {
class Connection;
}

namespace host {

/// What the host has for the start page; `connection` must outlive it.
StartOffer hostOffer(data::Connection &connection);

} // namespace host
