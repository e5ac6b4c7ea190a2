#include "platform/core/Format.h"

#include "platform/core/Decimal.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace core {

namespace {
const QLocale italian(QLocale::Italian, QLocale::Italy);
} // namespace

QString formatNumber(double value, int places)
{
    return italian.toString(roundDecimal(value, places), 'f', places);
}

QString plainNumber(double value, int places)
{
    return formatNumber(value, places).remove(u'.');
}

QString formatCurrency(double value, int places)
{
    const QString digits = formatNumber(value, places);
    return digits.startsWith(u'-') ? u'-' + currencyPrefix + digits.mid(1) : currencyPrefix + digits;
}

QString recordCode(int number, const QString &prefix)
{
    return prefix + u"%1"_s.arg(number, 6, 10, QLatin1Char('0'));
}

QString formatDate(QDate date)
{
    const int year = date.year();
    if (!date.isValid() || year < 1000 || year > 9999)
        return date.toString(u"dd/MM/yyyy"_s);
    // Lists and exports show thousands of them: reading the pattern for each takes ten times as long.
    const auto digit = [](int number) { return QChar(u'0' + number % 10); };
    const int month = date.month();
    const int day = date.day();
    const QChar text[] = {
        digit(day / 10),   digit(day),       u'/',       digit(month / 10), digit(month), u'/', digit(year / 1000),
        digit(year / 100), digit(year / 10), digit(year)};
    return QString(text, std::size(text));
}

QString flagText(bool value)
{
    return value ? u"True"_s : u"False"_s;
}

std::optional<bool> parseFlag(const QString &text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.compare(u"true"_s, Qt::CaseInsensitive) == 0)
        return true;
    if (trimmed.compare(u"false"_s, Qt::CaseInsensitive) == 0)
        return false;
    bool isNumber = false;
    const double number = trimmed.toDouble(&isNumber);
    return isNumber ? std::optional(number != 0) : std::nullopt;
}

} // namespace core
