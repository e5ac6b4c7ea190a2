#include "platform/data/SqlText.h"

#include <QDateTime>
#include <QRegularExpression>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace data {

namespace {

// `takesNull` is asked about each placeholder in its order: "?" or ":NAME".
QString withNullsAt(const QString &sql, const std::function<bool(QStringView)> &takesNull)
{
    // What stands in quotes is passed over.
    static const QRegularExpression part(u"'[^']*'|\"[^\"]*\"|\\?|:\\w+"_s);
    QString text;
    qsizetype copied = 0;
    for (auto matches = part.globalMatch(sql); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        const QStringView found = match.capturedView();
        if ((found[0] != u'?' && found[0] != u':') || !takesNull(found))
            continue;
        text += QStringView(sql).mid(copied, match.capturedStart() - copied);
        text += u"NULL"_s;
        copied = match.capturedEnd();
    }
    text += QStringView(sql).mid(copied);
    return text;
}

} // namespace

// Without the cast the engine would give the parameter the column's length, and refuse a longer text.
constexpr qsizetype longestSearched = 255;

QString inCapitals(const QString &placeholder)
{
    return u"UPPER(CAST(%1 AS VARCHAR(%2)))"_s.arg(placeholder).arg(longestSearched);
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

bool isMissing(const QVariant &value)
{
    switch (value.metaType().id()) {
    case QMetaType::QDate:
        return value.toDate().isNull();
    case QMetaType::QTime:
        return value.toTime().isNull();
    case QMetaType::QDateTime:
        return value.toDateTime().isNull();
    default:
        return value.isNull();
    }
}

QString withNullsWritten(const QString &sql, QVariantList &values)
{
    if (std::none_of(values.cbegin(), values.cend(), isMissing))
        return sql;
    qsizetype place = 0;
    QString text = withNullsAt(sql, [&](QStringView) { return isMissing(values.value(place++, 0)); });
    values.removeIf(isMissing);
    return text;
}

QString withNullsWritten(const QString &sql, QVariantMap &values)
{
    if (std::none_of(values.cbegin(), values.cend(), isMissing))
        return sql;
    QString text = withNullsAt(sql, [&](QStringView placeholder) {
        const auto value = values.constFind(placeholder.mid(1).toString());
        return value != values.cend() && isMissing(*value);
    });
    values.removeIf([](const std::pair<const QString &, QVariant &> &one) { return isMissing(one.second); });
    return text;
}

QString limitedTo(const QStringList &columns, const QString &query)
{
    return u"SELECT %1 FROM (%2)"_s.arg(columns.join(u", "_s), query);
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
