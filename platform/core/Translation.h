#pragma once
#include <QCoreApplication>

namespace core {

/// `text`, which the user reads and which is written in Italian, in the language of the installed translation; as it
/// stands where there is none. Literals alone go in, so that the tools find them. Every text has the same context here,
/// whatever class it belongs to; QObject::tr() would give it another one. Not for constants that are made before
/// main(): no translation is there yet.
inline QString tr(const char *text)
{
    Q_ASSERT_X(QCoreApplication::instance(), "core::tr", text);
    return QCoreApplication::translate("core", text);
}

} // namespace core
