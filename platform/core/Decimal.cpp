#include "platform/core/Decimal.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace core {

namespace {

// `value` times 10^places as an integer, halves away from zero, decided on 15 significant decimal digits.
qint64 scaled(double value, int places)
{
    // "%.14e" is exactly that decimal value: one digit, point, fourteen digits, exponent.
    char text[40];
    const auto end = std::to_chars(text, text + sizeof text, std::fabs(value), std::chars_format::scientific, 14).ptr;
    *end = 0;
    char digits[16];
    digits[0] = text[0];
    std::memcpy(digits + 1, text + 2, 14);
    digits[15] = 0;
    const int exponent = std::atoi(std::strchr(text, 'e') + 1);

    // The digits stand for 0.d1d2d3... times 10^(exponent+1); those before `kept` remain.
    const int kept = exponent + 1 + places;
    if (kept < 0)
        return 0;
    qint64 result = 0;
    for (int i = 0; i < kept; ++i)
        result = result * 10 + (i < 15 ? digits[i] - '0' : 0);
    if (kept < 15 && digits[kept] >= '5')
        ++result;
    return value < 0 ? -result : result;
}

constexpr double powersOfTen[] = {1, 10, 100, 1000, 10000, 100000, 1000000};

} // namespace

double roundDecimal(double value, int places)
{
    const double scale = powersOfTen[std::clamp(places, 0, 6)];
    // Beyond 15 digits a double has no decimals left to round.
    if (!std::isfinite(value) || std::fabs(value) * scale >= 1e15)
        return value;
    return static_cast<double>(scaled(value, places)) / scale;
}

bool fitsDecimal(double value, int places)
{
    constexpr double mostDigits = 1e18;
    return std::fabs(value) * powersOfTen[std::clamp(places, 0, 6)] < mostDigits;
}

qint64 toHundredths(double value)
{
    return std::isfinite(value) && std::fabs(value) < 1e15 ? scaled(value, 2) : 0;
}

} // namespace core
