#include "platform/core/CsvWriter.h"

#include "platform/core/Decimal.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace core {

namespace {

bool looksLikeFormula(QStringView text)
{
    return !text.isEmpty() && u"=+-@\t\r"_s.contains(text.front());
}

QString guarded(const QString &text)
{
    return looksLikeFormula(text) ? u'\'' + text : text;
}

QString numberText(const QVariant &value, const TableColumn &column)
{
    const int places = placesOf(value, column);
    if (places == 0 && value.metaType().id() != QMetaType::Double)
        return QString::number(value.toLongLong());
    return QString::number(roundDecimal(value.toDouble(), places), 'f', places).replace(u'.', u',');
}

QString cellText(const QVariant &value, const TableColumn &column)
{
    return isNumber(value) ? numberText(value, column) : guarded(plainText(value));
}

QString quotedCell(QString text)
{
    static const QString special = u";\"\r\n"_s;
    const bool needed = std::any_of(text.begin(), text.end(), [](QChar c) { return special.contains(c); }) ||
                        text.startsWith(u' ') || text.endsWith(u' ');
    return needed ? u'"' + text.replace(u"\""_s, u"\"\""_s) + u'"' : text;
}

QString clipboardCell(QString text)
{
    text.replace(u"\r\n"_s, u" "_s);
    for (QChar &c : text) {
        if (c == u'\t' || c == u'\r' || c == u'\n' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = u' ';
    }
    return text;
}

template <typename Cell>
QString joined(const Table &table, bool headers, QStringView separator, QStringView lineEnd, const Cell &cell)
{
    QString text;
    const auto addLine = [&](const auto &textOf) {
        for (qsizetype i = 0; i < table.columns.size(); ++i)
            text += (i > 0 ? separator.toString() : QString()) + cell(textOf(i));
        text += lineEnd;
    };
    if (headers)
        addLine([&](qsizetype i) { return guarded(table.columns[i].header); });
    for (const QVariantList &row : table.rows)
        addLine([&](qsizetype i) { return cellText(row[i], table.columns[i]); });
    return text;
}

} // namespace

QByteArray csvText(const Table &table)
{
    return "\xEF\xBB\xBF" + joined(table, true, u";", u"\r\n", quotedCell).toUtf8();
}

QString clipboardText(const Table &table, bool headers)
{
    return joined(table, headers, u"\t", u"\n", clipboardCell);
}

QString withoutFormulaGuard(const QString &cell)
{
    return cell.startsWith(u'\'') && looksLikeFormula(QStringView(cell).mid(1)) ? cell.mid(1) : cell;
}

} // namespace core
