#include "platform/core/Error.h"

namespace core {

QString errorText(const std::exception &error)
{
    if (const auto *own = dynamic_cast<const Error *>(&error))
        return own->text();
    return QString::fromUtf8(error.what());
}

QString errorContext(const std::exception &error)
{
    const auto *own = dynamic_cast<const Error *>(&error);
    return own ? own->context() : QString();
}

} // namespace core
