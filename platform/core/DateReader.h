#pragma once
#include <QDate>
#include <QString>

#include <optional>

/// The one rule by which a typed text is read as a date or as a time of day.
namespace core {

/// Reads a date: day, month and year separated by "/", "-" or "." (always the same), or written together with all their
/// zeros. A year of two digits means 2000 to 2099; without a year it is that of `today`.
///
/// | text                                             | read as    |
/// |--------------------------------------------------|------------|
/// | 20/02/2026  20/2/26  20-2-2026  20.02.2026        | 20/02/2026 |
/// | 20022026  200226                                 | 20/02/2026 |
/// | 20/2                                             | 20/02 of this year |
/// | 31/02/2026  20/13/26  20/2/  2026  202226  20/2-26 | nothing    |
///
/// Returns nothing for a text that is unfinished or no day of the calendar: it never becomes another date.
std::optional<QDate> readDate(const QString &text, QDate today);

/// Reads a time of day without seconds: "9:30", "09:30", "9.30", "9,30", "0930" or "930". Returns nothing for a text
/// that is unfinished ("9", "9:3") or no time ("24:00").
std::optional<QTime> readTime(const QString &text);

} // namespace core
