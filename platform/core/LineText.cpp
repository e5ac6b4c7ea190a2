#include "platform/core/LineText.h"

#include <QRegularExpression>
#include <QTextBoundaryFinder>

using namespace Qt::StringLiterals;

namespace core {

namespace {

bool isLineEnd(QChar character)
{
    return character == u'\n' || character == u'\r' || character.category() == QChar::Separator_Line ||
           character.category() == QChar::Separator_Paragraph;
}

bool isHalf(const QString &text, qsizetype i)
{
    if (text[i].isHighSurrogate())
        return i + 1 == text.size() || !text[i + 1].isLowSurrogate();
    return text[i].isLowSurrogate() && (i == 0 || !text[i - 1].isHighSurrogate());
}

} // namespace

QString withLineFeeds(QString text)
{
    return text.replace(u"\r\n"_s, u"\n"_s).replace(u"\n\r"_s, u"\n"_s).replace(u'\r', u'\n');
}

QString pastedLine(QString text)
{
    while (!text.isEmpty() && isLineEnd(text.back()))
        text.chop(1);
    while (!text.isEmpty() && isLineEnd(text.front()))
        text.remove(0, 1);
    return lineOf(text);
}

QString lineOf(QString text)
{
    text.replace(u"\r\n"_s, u"\n"_s);
    QString line;
    line.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isLineEnd(text[i]) || text[i] == u'\t')
            line += u' ';
        else if (text[i].category() != QChar::Other_Control && !isHalf(text, i))
            line += text[i];
    }
    return line;
}

QString cutTo(const QString &text, qsizetype units)
{
    if (text.size() <= units)
        return text;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    finder.setPosition(std::max<qsizetype>(units, 0));
    if (!finder.isAtBoundary())
        finder.toPreviousBoundary();
    return text.left(std::max<qsizetype>(finder.position(), 0));
}

bool matches(const QString &text, const QString &pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(text).hasMatch();
}

} // namespace core
