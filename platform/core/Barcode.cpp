#include "platform/core/Barcode.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace core {

namespace {

constexpr qsizetype lengths[] = {14, 13, 12, 8};
constexpr qsizetype longest = 14;

/// What stands behind an identifier.
struct Element
{
    QStringView identifier;
    qsizetype length; ///< at most that much where a separator ends it
    bool fixed;
};

constexpr Element elements[] = {{u"01", 14, true}, {u"02", 14, true}, {u"10", 20, false}, {u"11", 6, true},
                                {u"12", 6, true},  {u"13", 6, true},  {u"15", 6, true},   {u"16", 6, true},
                                {u"17", 6, true},  {u"20", 2, true},  {u"21", 20, false}, {u"30", 8, false},
                                {u"37", 8, false}};

bool isDigits(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

bool isTradeNumber(const QString &code)
{
    return std::find(std::begin(lengths), std::end(lengths), code.size()) != std::end(lengths) && isDigits(code);
}

// The symbology's name is for readers, brackets are for people: a separator stands where they end a value.
QString plain(const QString &scanned)
{
    static const QRegularExpression symbology(u"^\\][A-Za-z][0-9]"_s);
    static const QRegularExpression bracketed(u"\\((\\d{2})\\)"_s);
    QString text = scanned.trimmed();
    text.remove(symbology);
    text.replace(shownSeparator, groupSeparator);
    text.replace(bracketed, groupSeparator + u"\\1"_s);
    return text;
}

bool take(const Element &element, QStringView value, Gs1Code &code)
{
    if (value.isEmpty() || (element.fixed && (value.size() != element.length || !isDigits(value))))
        return false;
    if (element.identifier == u"01" || element.identifier == u"02") {
        code.gtin = value.toString();
    } else if (element.identifier == u"10") {
        code.lot = value.toString();
    } else if (element.identifier == u"30" || element.identifier == u"37") {
        code.count = value.toDouble();
        return isDigits(value) && code.count > 0;
    }
    return true;
}

} // namespace

bool checkDigitFits(const QString &code)
{
    if (!isTradeNumber(code))
        return true;
    int sum = 0;
    for (qsizetype fromRight = 0; fromRight < code.size(); ++fromRight)
        sum += code[code.size() - 1 - fromRight].digitValue() * (fromRight % 2 ? 3 : 1);
    return sum % 10 == 0;
}

QStringList sameNumbers(const QString &code)
{
    QStringList texts = {code};
    if (!isTradeNumber(code))
        return texts;
    const QString whole = wholeNumber(code);
    for (const qsizetype length : lengths) {
        const qsizetype zeros = longest - length;
        if (length != code.size() && whole.left(zeros).count(u'0') == zeros)
            texts.append(whole.right(length));
    }
    return texts;
}

QString wholeNumber(const QString &code)
{
    return isTradeNumber(code) ? code.rightJustified(longest, u'0') : code;
}

std::optional<Gs1Code> readGs1(const QString &scanned)
{
    const QString text = plain(scanned);
    QStringView rest = text;
    Gs1Code code;
    while (!rest.isEmpty()) {
        if (rest.front() == groupSeparator) {
            rest = rest.mid(1);
            continue;
        }
        const auto *element = std::find_if(std::begin(elements), std::end(elements),
                                           [&rest](const Element &known) { return rest.startsWith(known.identifier); });
        if (element == std::end(elements))
            return {};
        rest = rest.mid(element->identifier.size());
        const qsizetype separator = rest.indexOf(groupSeparator);
        const qsizetype end = std::min(separator < 0 ? rest.size() : separator, element->length);
        if (!take(*element, rest.left(end), code))
            return {};
        rest = rest.mid(end);
    }
    return code.gtin.isEmpty() || !checkDigitFits(code.gtin) ? std::nullopt : std::optional(code);
}

} // namespace core
