#pragma once
#include <QString>

namespace core {

/// A code that is stored, and what it means to whoever reads it.
struct CodeText
{
    QString code;
    QString text;
};

} // namespace core
