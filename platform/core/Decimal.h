#pragma once
#include <QtGlobal>

namespace core {

/// `value` rounded to `places` decimals (0 to 6), halves away from zero. The decision is taken on the number's decimal
/// value at 15 significant digits, so 1.005 gives 1.01 and -1.005 gives -1.01. Never returns a negative zero.
double roundDecimal(double value, int places);

/// Does `value` fit a DECIMAL(18, `places`) column? The database driver stores its smallest number for one that does
/// not, and reports no error.
bool fitsDecimal(double value, int places);

/// `value` rounded to two places, as a count of hundredths, for exact sums.
qint64 toHundredths(double value);
/// The number of which `hundredths` are the hundredths.
inline double fromHundredths(qint64 hundredths)
{
    return static_cast<double>(hundredths) / 100.0;
}

} // namespace core
