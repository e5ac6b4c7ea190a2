#include "platform/data/TextSearch.h"

#include "platform/data/SqlText.h"
#include "platform/data/WordIndex.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace data {

// Comparing under the collation takes several times as long as the plain way. Both give the same where only letters
// without accents meet: for a row of plain ASCII, which has as many bytes as letters, and for a text without letters.
QString containing(const QString &column, const QString &text, Values &values)
{
    const QString plain = searchable(text);
    const QString simply = values.add(plain);
    if (std::none_of(plain.begin(), plain.end(), [](QChar sign) { return sign.isLetter(); }))
        return u"%1 CONTAINING %2"_s.arg(column, simply);
    return u"(%1 CONTAINING %2 OR OCTET_LENGTH(%1) > CHAR_LENGTH(%1) AND %1 COLLATE UNICODE_CI_AI CONTAINING %3)"_s.arg(
        column, simply, values.add(plain));
}

// A word that is longer than any column is found nowhere, and so are its first letters.
QString containingWords(const QStringList &columns, const QString &text, Values &values)
{
    constexpr qsizetype longest = 100;
    static const QRegularExpression blanks(u"\\s+"_s);
    QStringList conditions;
    for (const QString &word : text.split(blanks, Qt::SkipEmptyParts)) {
        QStringList places;
        for (const QString &column : columns)
            places.append(containing(column, word.left(longest), values));
        conditions.append(u'(' + places.join(u" OR "_s) + u')');
    }
    return conditions.isEmpty() ? u"1 = 1"_s : conditions.join(u" AND "_s);
}

Rows findText(Connection &connection, const SearchedTable &table, const QString &text, int most)
{
    Values values(Values::Way::Bound);
    const QString condition = containingWords(table.searched, text, values);
    QString sql = u"SELECT FIRST %1 %2 AS CHIAVE, %3 AS TESTO, %4 AS DETTAGLIO FROM %5 WHERE %6"_s.arg(most).arg(
        table.key, table.text, table.detail, table.from, condition);
    if (!table.order.isEmpty())
        sql += u" ORDER BY "_s + table.order;
    return connection.run(sql, values.bound());
}

} // namespace data
