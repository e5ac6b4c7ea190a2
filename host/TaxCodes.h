#pragma once
#include <QString>

/// The check characters of Italian tax identifiers.
namespace host {

/// Check digit behind the first ten `digits` of a VAT number: digits in even places count twice, less 9 above 9, and
/// the sum of all eleven is a multiple of 10.
QChar vatCheckDigit(const QString &digits);

/// True for eleven digits with the right check digit, also behind "IT". A number that begins with another country's two
/// letters is not judged: true.
bool isVatNumber(const QString &text);

/// True for a person's sixteen characters with the right check character (letters in place of digits included), and
/// for a firm's eleven digits.
bool isTaxCode(const QString &text);

} // namespace host
