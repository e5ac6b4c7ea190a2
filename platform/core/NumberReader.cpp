#include "platform/core/NumberReader.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace core {

namespace {

// Sign, digits, points and commas alone: without the currency sign and the blanks beside it or between thousands.
QString bare(const QString &text)
{
    static const QRegularExpression edges(u"^[ \\t€]+|[ \\t€]+$"_s);
    static const QRegularExpression behindSign(u"^([+-])[ €]+"_s);
    static const QRegularExpression grouped(u"^[+-]?\\d{1,3}(?: \\d{3})+(?:[.,]\\d*)?$"_s);
    QString number = text;
    number.replace(QChar::Nbsp, u' ').replace(QChar(0x202F), u' ');
    number.remove(edges).replace(behindSign, u"\\1"_s);
    return grouped.match(number).hasMatch() ? number.remove(u' ') : number;
}

// The shapes that can be read with one decimal mark only; `decimal` and `group` are pattern texts.
QRegularExpression unmistakable(const QString &decimal, const QString &group)
{
    const QString pattern = u"^[+-]?(?:"
                            "(?:\\d*|\\d{1,3}(?:G\\d{3})+)D(?:\\d{1,2}|\\d{4,})" // 1,5 1.234,50
                            "|\\d{1,3}(?:G\\d{3})+D\\d+|(?:0|\\d{4,})D\\d+"      // 1.234,500 0,125 1234,567
                            "|\\d{1,3}(?:G\\d{3}){2,})$"_s;                      // 1.234.567
    return QRegularExpression(QString(pattern).replace(u'G', group).replace(u'D', decimal));
}

bool isWithComma(const QString &number)
{
    static const QRegularExpression shape = unmistakable(u","_s, u"\\."_s);
    return shape.match(number).hasMatch();
}

bool isWithPoint(const QString &number)
{
    static const QRegularExpression shape = unmistakable(u"\\."_s, u","_s);
    return shape.match(number).hasMatch();
}

// `shape` tells what may stand before the mark, behind an optional sign.
std::optional<double> readShape(QString number, const QRegularExpression &shape, QChar group, QChar decimal)
{
    if (!shape.match(number).hasMatch())
        return {};
    bool ok = false;
    const double value = number.remove(group).replace(decimal, u'.').toDouble(&ok);
    return ok ? std::optional(value + 0.0) : std::nullopt; // "-0" is 0
}

std::optional<double> readWithPoint(const QString &number)
{
    static const QRegularExpression shape(u"^[+-]?(?:\\d+|\\d{1,3}(?:,\\d{3})+|(?=\\.\\d))(?:\\.\\d*)?$"_s);
    return readShape(number, shape, u',', u'.');
}

std::optional<double> readWithComma(const QString &number)
{
    static const QRegularExpression shape(u"^[+-]?(?:\\d+|\\d{1,3}(?:\\.\\d{3})+|(?=,\\d))(?:,\\d*)?$"_s);
    return readShape(number, shape, u'.', u',');
}

} // namespace

std::optional<WrittenNumber> readNumber(const QString &text)
{
    const QString number = bare(text);
    // Commas without a point never separate thousands here: whoever types the second one has made a slip.
    const bool point = number.contains(u'.') && isWithPoint(number);
    const std::optional<double> value = point ? readWithPoint(number) : readWithComma(number);
    if (!value)
        return {};
    const qsizetype mark = number.indexOf(point ? u'.' : u',');
    return WrittenNumber{*value, mark < 0 ? 0 : static_cast<int>(number.size() - mark - 1)};
}

NumberReader::NumberReader(const QStringList &column)
{
    for (const QString &cell : column)
        learn(cell);
}

void NumberReader::learn(const QString &cell)
{
    const QString number = bare(cell);
    commas_ = commas_ || isWithComma(number);
    points_ = points_ || isWithPoint(number);
}

std::optional<double> NumberReader::read(const QString &text) const
{
    const QString number = bare(text);
    if (isWithPoint(number) || (points_ && !commas_))
        return readWithPoint(number);
    const bool unclear = points_ && (number.contains(u'.') || number.contains(u',')) && !isWithComma(number);
    return unclear ? std::nullopt : readWithComma(number);
}

} // namespace core
