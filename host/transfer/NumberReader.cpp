#include "host/transfer/NumberReader.h"

#include "platform/core/Format.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// Only digits, signs, points and commas, which is what the patterns below look at.
QString bare(const QString &text)
{
    QString digits = text;
    return digits.remove(u'€').remove(u' ').remove(QChar::Nbsp).remove(QChar(0x202F));
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

bool isWithComma(const QString &text)
{
    static const QRegularExpression shape = unmistakable(u","_s, u"\\."_s);
    return shape.match(text).hasMatch();
}

bool isWithPoint(const QString &text)
{
    static const QRegularExpression shape = unmistakable(u"\\."_s, u","_s);
    return shape.match(text).hasMatch();
}

std::optional<double> readWithPoint(QString text)
{
    static const QRegularExpression shape(u"^[+-]?(?:\\d+|\\d{1,3}(?:,\\d{3})+|(?=\\.))(?:\\.\\d*)?$"_s);
    if (!shape.match(text).hasMatch())
        return {};
    bool ok = false;
    const double value = text.remove(u',').toDouble(&ok);
    return ok ? std::optional(value) : std::nullopt;
}

std::optional<double> readWithComma(const QString &text)
{
    return core::parseNumber(text.startsWith(u'+') ? text.mid(1) : text);
}

} // namespace

NumberReader::NumberReader(const QStringList &column)
{
    for (const QString &cell : column) {
        const QString text = bare(cell);
        commas_ = commas_ || isWithComma(text);
        points_ = points_ || isWithPoint(text);
    }
}

std::optional<double> NumberReader::read(const QString &text) const
{
    const QString digits = bare(text);
    if (isWithPoint(digits) || (points_ && !commas_))
        return readWithPoint(digits);
    const bool unclear = points_ && (digits.contains(u'.') || digits.contains(u',')) && !isWithComma(digits);
    return unclear ? std::nullopt : readWithComma(digits);
}

} // namespace host
