#include "platform/data/TextSearch.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace data {

// A word that is longer than any column is found nowhere, and so are its first letters.
QString containingWords(const QStringList &columns, const QString &text, QVariantList &values)
{
    constexpr qsizetype longest = 100;
    static const QRegularExpression blanks(u"\\s+"_s);
    QStringList parts;
    for (const QString &column : columns)
        parts.append(u"COALESCE(%1, '')"_s.arg(column));
    QStringList conditions;
    for (const QString &word : text.split(blanks, Qt::SkipEmptyParts)) {
        conditions.append(
            u"(%1) COLLATE UNICODE_CI_AI CONTAINING CAST(? AS VARCHAR(%2))"_s.arg(parts.join(u" || ' ' || "_s))
                .arg(longest));
        values.append(word.left(longest));
    }
    return conditions.isEmpty() ? u"1 = 1"_s : conditions.join(u" AND "_s);
}

Rows findText(Connection &connection, const SearchedTable &table, const QString &text, int most, QVariantList values)
{
    const QString condition = containingWords(table.searched, text, values);
    QString sql = u"SELECT FIRST %1 %2 AS CHIAVE, %3 AS TESTO, %4 AS DETTAGLIO FROM %5 WHERE %6"_s.arg(most).arg(
        table.key, table.text, table.detail, table.from, condition);
    if (!table.order.isEmpty())
        sql += u" ORDER BY "_s + table.order;
    return connection.run(sql, values);
}

} // namespace data
