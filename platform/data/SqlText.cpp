#include "platform/data/SqlText.h"

#include <QDate>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace data {

constexpr qsizetype longestSearched = 255;

namespace {

// Without the cast the engine would give the parameter the column's length, and refuse a longer text.
QString textParameter(const QString &placeholder)
{
    return u"CAST(%1 AS VARCHAR(%2))"_s.arg(placeholder).arg(longestSearched);
}

// What each match of `words` has behind it.
QStringList namesBehind(const QRegularExpression &words, const QString &sql)
{
    QStringList names;
    for (auto matches = words.globalMatch(sql); matches.hasNext();)
        names.append(matches.next().captured(1).toUpper());
    return names;
}

} // namespace

QString Values::add(const QVariant &value)
{
    const int type = value.metaType().id();
    if (way_ == Way::Bound) {
        bound_.append(value);
        return type == QMetaType::QString ? textParameter(u"?"_s) : u"?"_s;
    }
    if (type == QMetaType::QDate)
        return quoted(value.toDate().toString(Qt::ISODate));
    return type == QMetaType::QString ? quoted(value.toString()) : value.toString();
}

QString inCapitals(const QString &placeholder)
{
    return u"UPPER(%1)"_s.arg(textParameter(placeholder));
}

QVariant searchedText(const QString &text)
{
    if (text.size() > longestSearched)
        return {};
    return text.isNull() ? u""_s : text;
}

QString capitalsOf(const QString &text)
{
    QList<uint> letters = text.toUcs4();
    for (uint &letter : letters) {
        const char32_t capital = QChar::toUpper(static_cast<char32_t>(letter));
        // Greek letters with an iota below them have one that toUpper() leaves out.
        letter = QChar::isLower(capital) ? QChar::toTitleCase(capital) : capital;
    }
    return QString::fromUcs4(reinterpret_cast<const char32_t *>(letters.constData()), letters.size());
}

QString positional(const QString &sql, QStringList &names)
{
    // What stands in quotes is passed over.
    static const QRegularExpression part(u"'[^']*'|\"[^\"]*\"|:(\\w+)"_s);
    QString text;
    qsizetype copied = 0;
    for (auto matches = part.globalMatch(sql); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        if (!match.hasCaptured(1))
            continue;
        names.append(match.captured(1));
        text += QStringView(sql).mid(copied, match.capturedStart() - copied);
        text += u'?';
        copied = match.capturedEnd();
    }
    text += QStringView(sql).mid(copied);
    return text;
}

QString limitedTo(const QStringList &columns, const QString &query)
{
    return u"SELECT %1 FROM (%2)"_s.arg(columns.join(u", "_s), query);
}

QStringList writtenTables(const QString &sql)
{
    static const QRegularExpression words(u"\\b(?:INTO|UPDATE|DELETE\\s+FROM)\\s+(\\w+)"_s,
                                          QRegularExpression::CaseInsensitiveOption);
    return namesBehind(words, sql);
}

QStringList readTables(const QString &sql)
{
    static const QRegularExpression words(u"\\b(?:FROM|JOIN)\\s+(\\w+)"_s, QRegularExpression::CaseInsensitiveOption);
    return namesBehind(words, sql);
}

QString statementKind(const QString &sql)
{
    static const QRegularExpression shape(
        u"^\\s*(INSERT\\s+INTO|DELETE\\s+FROM|UPDATE|(?:CREATE|ALTER|DROP)\\s+\\w+)\\s+(\\w+)"_s,
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression select(u"^\\s*SELECT\\b.*?\\bFROM\\s+(\\w+)"_s,
                                           QRegularExpression::CaseInsensitiveOption |
                                               QRegularExpression::DotMatchesEverythingOption);
    if (const auto match = shape.match(sql); match.hasMatch())
        return (match.captured(1) + u' ' + match.captured(2)).simplified().toUpper();
    if (const auto match = select.match(sql); match.hasMatch())
        return u"SELECT FROM "_s + match.captured(1).toUpper();
    return sql.trimmed().section(u' ', 0, 0).toUpper();
}

} // namespace data
