#pragma once
#include "platform/data/Rows.h"

#include <QByteArray>

namespace fatturapa {

/// The contents of an invoice file for reading: a row for each value with its caption (VOCE, VALORE), and before each
/// part a row with its title (SEZIONE). In the file's own words and order, dates and decimals as they are written in
/// Italy.
data::Rows leggibile(const QByteArray &xml);

} // namespace fatturapa
