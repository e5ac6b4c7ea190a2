#pragma once
#include <QString>

namespace host {

/// What is stored of a password: method, rounds, a salt of its own and PBKDF2's result, in one text. Takes some tenths
/// of a second, as intended: guessing takes as long for every guess.
QString passwordHash(const QString &password);

/// True when `hash` was made from `password`. A hash that is damaged or of an unknown method matches nothing.
bool passwordMatches(const QString &password, const QString &hash);

} // namespace host
