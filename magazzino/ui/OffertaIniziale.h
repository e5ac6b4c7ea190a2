#pragma once
#include "host/StartOffers.h"

/// What the module has for the start page.
host::StartOffer offertaIniziale();
