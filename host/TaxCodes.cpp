#include "host/TaxCodes.h"

#include "platform/core/LineText.h"

#include <array>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// What a character in an odd place (the first, the third...) counts: the same for a digit and the letter that stands at
// its position in the alphabet.
constexpr std::array<int, 26> oddPlace = {1,  0,  5, 7, 9, 13, 15, 17, 19, 21, 2,  4,  18,
                                          20, 11, 3, 6, 8, 12, 14, 16, 10, 22, 25, 24, 23};

int alphabetPosition(QChar character)
{
    return character.isDigit() ? character.digitValue() : character.unicode() - u'A';
}

QChar personCheckCharacter(const QString &text)
{
    int sum = 0;
    for (int i = 0; i < 15; ++i) {
        const int position = alphabetPosition(text[i]);
        sum += i % 2 == 0 ? oddPlace.at(static_cast<size_t>(position)) : position;
    }
    return QChar(u'A' + sum % 26);
}

} // namespace

QChar vatCheckDigit(const QString &digits)
{
    int sum = 0;
    for (int i = 0; i < 10; ++i) {
        const int digit = digits[i].digitValue() * (i % 2 == 1 ? 2 : 1);
        sum += digit > 9 ? digit - 9 : digit;
    }
    return QChar(u'0' + (10 - sum % 10) % 10);
}

bool isVatNumber(const QString &text)
{
    QString number = text.trimmed().toUpper();
    // The longest ones of other countries have twelve characters behind the two letters.
    if (core::matches(number, u"[A-Z]{2}.{1,12}"_s)) {
        if (!number.startsWith(u"IT"))
            return true;
        number.remove(0, 2);
    }
    return core::matches(number, u"[0-9]{11}"_s) && number[10] == vatCheckDigit(number);
}

bool isTaxCode(const QString &text)
{
    const QString code = text.trimmed().toUpper();
    if (code.size() == 11)
        return isVatNumber(code);
    return core::matches(code, u"[A-Z]{6}[0-9LMNPQRSTUV]{2}[A-Z][0-9LMNPQRSTUV]{2}[A-Z][0-9LMNPQRSTUV]{3}[A-Z]"_s) &&
           code[15] == personCheckCharacter(code);
}

} // namespace host
