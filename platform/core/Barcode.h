#pragma once
#include <QStringList>

#include <optional>

/// What barcode readers type.
namespace core {

/// What ends a value of no fixed length in a GS1 code, and the sign that stands for it on the screen.
///@{
inline constexpr QChar groupSeparator(29);
inline constexpr QChar shownSeparator(0x241d);
///@}

/// Does the last digit of a number of 8, 12, 13 or 14 digits (EAN-8, UPC, EAN-13, GTIN-14) fit the others? A code of
/// another length, or with other characters, has no check digit and always fits.
bool checkDigitFits(const QString &code);

/// All texts under which the number `code` may be written, itself first: with the zeros that fill it up to 14 digits,
/// and without them. Of anything but 8, 12, 13 or 14 digits itself alone.
QStringList sameNumbers(const QString &code);

/// The one of them that all share, with 14 digits; what is no such number stays as it is.
QString wholeNumber(const QString &code);

/// What a GS1 code says of the goods.
struct Gs1Code
{
    QString gtin; ///< 14 digits
    QString lot = {};
    double count = 1; ///< of the trade items
};

/// Reads a GS1 code as a reader types it: identifiers 01 or 02 (number), 10 (lot), 30 and 37 (count) in any order, with
/// or without the symbology's name before them ("]C1"), a separator behind values of no fixed length, or all of them in
/// brackets. Dates, serial numbers and variants (11 to 17, 20, 21) are passed over. Nothing for what is no such code,
/// has no number, or one whose check digit does not fit.
std::optional<Gs1Code> readGs1(const QString &scanned);

} // namespace core
