#include "platform/core/Clock.h"

namespace core {

namespace {
std::function<QDateTime()> source;
} // namespace

QDateTime now()
{
    return source ? source() : QDateTime::currentDateTime();
}

void setClock(std::function<QDateTime()> clock)
{
    source = std::move(clock);
}

} // namespace core
