#pragma once
#include <QDateTime>
#include <functional>

namespace core {

/// The current local date and time. Every "now" and "today" of the program comes from here, so tests can set it.
QDateTime now();
/// The day of now().
inline QDate today()
{
    return now().date();
}

/// Replaces the clock; an empty function restores the machine's own.
void setClock(std::function<QDateTime()> clock);

} // namespace core
