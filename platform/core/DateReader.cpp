#include "platform/core/DateReader.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace core {

namespace {

int yearOf(const QString &digits, QDate today)
{
    if (digits.isEmpty())
        return today.year();
    return digits.size() == 2 ? 2000 + digits.toInt() : digits.toInt();
}

} // namespace

std::optional<QDate> readDate(const QString &text, QDate today)
{
    static const QRegularExpression separated(u"^(\\d{1,2})([-/.])(\\d{1,2})(?:\\2(\\d{4}|\\d{2}))?$"_s);
    static const QRegularExpression together(u"^(\\d{2})()(\\d{2})(\\d{4}|\\d{2})$"_s);
    auto match = separated.match(text.trimmed());
    if (!match.hasMatch())
        match = together.match(text.trimmed());
    if (!match.hasMatch())
        return {};
    const QDate date(yearOf(match.captured(4), today), match.captured(3).toInt(), match.captured(1).toInt());
    return date.isValid() ? std::optional(date) : std::nullopt;
}

std::optional<QTime> readTime(const QString &text)
{
    static const QRegularExpression shape(u"^(\\d{1,2})[:.,]?(\\d{2})$"_s);
    const auto match = shape.match(text.trimmed());
    if (!match.hasMatch())
        return {};
    const QTime time(match.captured(1).toInt(), match.captured(2).toInt());
    return time.isValid() ? std::optional(time) : std::nullopt;
}

} // namespace core
