#pragma once
#include <QCryptographicHash>
#include <QString>

namespace core {

/// The SHA-256 of `content`: 64 hexadecimal digits in small letters.
inline QString sha256Text(const QByteArray &content)
{
    return QString::fromLatin1(QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex());
}

} // namespace core
