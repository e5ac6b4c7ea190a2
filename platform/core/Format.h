#pragma once
#include <QDate>
#include <QString>
#include <optional>

/// Numbers and dates as an Italian reads them, whatever the machine's locale.
namespace core {

/// "1.234,50": thousands separated, `places` decimals (0 to 6), halves away from zero.
QString formatNumber(double value, int places = 2);
/// The same as one types it, "1234,50".
QString plainNumber(double value, int places = 2);
/// "€ 1.234,50", negative "-€ 1.234,50".
QString formatCurrency(double value, int places = 2);
/// What stands before an amount.
inline const QString currencyPrefix = QStringLiteral("€ ");
/// "FOR000012": `prefix` and `number` padded to six digits.
QString recordCode(int number, const QString &prefix);
/// "dd/MM/yyyy"; empty for an invalid date.
QString formatDate(QDate date);

/// "True" or "False", as flags are stored.
QString flagText(bool value);
/// Reads a flag as stored: true or false in any case, or a number where 0 is false; nothing when it is neither.
std::optional<bool> parseFlag(const QString &text);

} // namespace core
