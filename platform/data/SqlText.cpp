#include "platform/data/SqlText.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace data {

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
