#include "host/users/Password.h"

#include <QPasswordDigestor>
#include <QRandomGenerator>
#include <QStringList>

#include <array>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int rounds = 210'000;
constexpr int saltWords = 4;
constexpr int keyLength = 32;
const QString method = u"pbkdf2-sha512"_s;

QByteArray derive(const QString &password, const QByteArray &salt, int count)
{
    // The same letters typed on another keyboard may come composed differently.
    const QByteArray bytes = password.normalized(QString::NormalizationForm_C).toUtf8();
    return QPasswordDigestor::deriveKeyPbkdf2(QCryptographicHash::Sha512, bytes, salt, count, keyLength);
}

// Takes the same time wherever the first difference is.
bool equalInConstantTime(const QByteArray &left, const QByteArray &right)
{
    if (left.size() != right.size())
        return false;
    int difference = 0;
    for (qsizetype i = 0; i < left.size(); ++i)
        difference |= left[i] ^ right[i];
    return difference == 0;
}

} // namespace

QString passwordHash(const QString &password)
{
    std::array<quint32, saltWords> words{};
    QRandomGenerator::system()->fillRange(words.data(), saltWords);
    const QByteArray salt(reinterpret_cast<const char *>(words.data()), sizeof words);
    return u"%1$%2$%3$%4"_s.arg(method).arg(rounds).arg(QString::fromLatin1(salt.toBase64()),
                                                        QString::fromLatin1(derive(password, salt, rounds).toBase64()));
}

bool passwordMatches(const QString &password, const QString &hash)
{
    const QStringList parts = hash.split(u'$');
    if (parts.size() != 4 || parts[0] != method)
        return false;
    const int count = parts[1].toInt();
    const QByteArray salt = QByteArray::fromBase64(parts[2].toLatin1());
    const QByteArray key = QByteArray::fromBase64(parts[3].toLatin1());
    return count > 0 && key.size() == keyLength && equalInConstantTime(derive(password, salt, count), key);
}

} // namespace host
