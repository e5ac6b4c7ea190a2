#include "platform/core/XlsxWriter.h"

#include "platform/core/Decimal.h"
#include "platform/core/Error.h"
#include "platform/core/Translation.h"
#include "platform/core/ZipFile.h"

#include <QDate>
#include <QHash>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace core {

namespace {

constexpr qsizetype mostRows = 1'048'576 - 1; // one is the captions'
constexpr qsizetype longestText = 32767;
constexpr int captionStyle = 1;
constexpr int firstFormatStyle = 2;
constexpr int firstFormatId = 164; // lower ones have fixed meanings

const QString xmlHead = u"<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"_s;

// The parts that are the same in every workbook with one sheet.
const QByteArray contentTypes = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">
<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>
<Default Extension="xml" ContentType="application/xml"/>
<Override PartName="/xl/workbook.xml"
 ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml"/>
<Override PartName="/xl/worksheets/sheet1.xml"
 ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml"/>
<Override PartName="/xl/styles.xml"
 ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml"/>
<Override PartName="/xl/sharedStrings.xml"
 ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.sharedStrings+xml"/>
</Types>)";

const QByteArray packageRelations = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">
<Relationship Id="rId1" Target="xl/workbook.xml"
 Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument"/>
</Relationships>)";

const QByteArray workbookRelations = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">
<Relationship Id="rId1" Target="worksheets/sheet1.xml"
 Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet"/>
<Relationship Id="rId2" Target="styles.xml"
 Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles"/>
<Relationship Id="rId3" Target="sharedStrings.xml"
 Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/sharedStrings"/>
</Relationships>)";

// %1: the sheet's name.
const QString workbookPart = xmlHead + uR"(<workbook xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"
 xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships">
<bookViews><workbookView/></bookViews>
<sheets><sheet name="%1" sheetId="1" r:id="rId1"/></sheets>
</workbook>)"_s;

// %1: number formats, %2: one style for each. Before them stand the plain style and the captions' bold one. Programs
// expect two fills, whatever is used.
const QString stylesPart = xmlHead + uR"(<styleSheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main">
%1<fonts count="2"><font><sz val="11"/><name val="Calibri"/></font>
<font><b/><sz val="11"/><name val="Calibri"/></font></fonts>
<fills count="2"><fill><patternFill patternType="none"/></fill><fill><patternFill patternType="gray125"/></fill></fills>
<borders count="1"><border/></borders>
<cellStyleXfs count="1"><xf numFmtId="0" fontId="0" fillId="0" borderId="0"/></cellStyleXfs>
<cellXfs><xf numFmtId="0" fontId="0" fillId="0" borderId="0" xfId="0"/>
<xf numFmtId="0" fontId="1" fillId="0" borderId="0" xfId="0" applyFont="1"/>%2</cellXfs>
<cellStyles count="1"><cellStyle name="Normal" xfId="0" builtinId="0"/></cellStyles>
</styleSheet>)"_s;

// %1: the columns. The captions stay in sight; the rows follow.
const QString sheetPart = xmlHead + uR"(<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main">
<sheetViews><sheetView tabSelected="1" workbookViewId="0">
<pane ySplit="1" topLeftCell="A2" activePane="bottomLeft" state="frozen"/></sheetView></sheetViews>
%1<sheetData>)"_s;

const QString textsPart =
    xmlHead + u"<sst xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">%1</sst>"_s;

QString sheetName(const QString &title)
{
    constexpr qsizetype longest = 31;
    static const QRegularExpression forbidden(u"[\\[\\]:*?/\\\\']"_s);
    QString name = title;
    name = name.replace(forbidden, u" "_s).simplified().left(longest).trimmed();
    return name.isEmpty() ? u"Elenco"_s : name;
}

// What XML cannot hold (most control characters, half a surrogate pair, U+FFFE and U+FFFF) shows as the sign for an
// unknown character; a text that looks like the format's own escape keeps its letters.
QString xmlText(QString text)
{
    constexpr char16_t unknown = 0xFFFD;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            ++i;
            continue;
        }
        const bool isControl = c < 0x20 && c != u'\t' && c != u'\n' && c != u'\r';
        if (isControl || QChar::isSurrogate(c) || c >= 0xFFFE)
            text[i] = QChar(unknown);
    }
    static const QRegularExpression escape(u"_(?=x[0-9A-Fa-f]{4}_)"_s);
    if (text.contains(u"_x"_s))
        text.replace(escape, u"_x005F_"_s);
    return text.toHtmlEscaped();
}

// "0", "#,##0.00" or "€ #,##0.00": the spreadsheet shows the separators of its own language.
QString numberFormat(int places, bool currency)
{
    const QString digits =
        (currency || places > 0 ? u"#,##0"_s : u"0"_s) + (places > 0 ? u'.' + QString(places, u'0') : QString());
    return currency ? u"\"€ \"%1;-\"€ \"%1"_s.arg(digits) : digits;
}

// "A" to "Z", "AA" and so on.
QString columnLetters(qsizetype column)
{
    constexpr int letters = 26;
    QString name;
    for (qsizetype rest = column + 1; rest > 0; rest = (rest - 1) / letters)
        name.prepend(QChar(static_cast<char16_t>(u'A' + (rest - 1) % letters)));
    return name;
}

// Days as spreadsheets count them: 1900 has a 29 February there.
qint64 dayNumber(const QDate &date)
{
    const qint64 days = QDate(1899, 12, 30).daysTo(date);
    return date < QDate(1900, 3, 1) ? days - 1 : days;
}

// The sheet being written, with what its cells refer to by number: texts and formats.
class Sheet
{
public:
    explicit Sheet(const Table &table)
        : table_(table)
    {
        for (qsizetype i = 0; i < table.columns.size(); ++i)
            letters_.append(columnLetters(i));
    }

    QByteArray written()
    {
        cells_ = sheetPart.arg(columns()).toUtf8();
        writeRow(0, [this](qsizetype column) { writeText(-1, column, table_.columns[column].header, captionStyle); });
        for (qsizetype row = 0; row < table_.rows.size(); ++row)
            writeRow(row + 1, [&](qsizetype column) { writeCell(row, column, table_.rows[row][column]); });
        cells_ += "</sheetData></worksheet>";
        return std::move(cells_);
    }

    QByteArray texts() const
    {
        QStringList items(texts_.size());
        for (auto it = texts_.begin(); it != texts_.end(); ++it)
            items[*it] = u"<si><t xml:space=\"preserve\">"_s + xmlText(it.key()) + u"</t></si>"_s;
        return textsPart.arg(items.join(u'\n')).toUtf8();
    }

    QByteArray styles() const
    {
        QString formats;
        QString cellStyles;
        for (qsizetype i = 0; i < formats_.size(); ++i) {
            formats += u"<numFmt numFmtId=\"%1\" formatCode=\"%2\"/>"_s.arg(QString::number(firstFormatId + i),
                                                                            xmlText(formats_[i]));
            cellStyles += u"<xf numFmtId=\"%1\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" "
                          "applyNumberFormat=\"1\"/>"_s.arg(firstFormatId + i);
        }
        if (!formats.isEmpty())
            formats = u"<numFmts count=\"%1\">"_s.arg(formats_.size()) + formats + u"</numFmts>\n"_s;
        return stylesPart.arg(formats, cellStyles).toUtf8();
    }

private:
    // A column is as wide as its digits, about seven pixels each, and a margin.
    QString columns() const
    {
        QString text;
        for (qsizetype i = 0; i < table_.columns.size(); ++i) {
            const double width = std::clamp(table_.columns[i].width / 7.0, 4.0, 120.0) + 5 / 7.0;
            text += u"<col min=\"%1\" max=\"%1\" width=\"%2\" customWidth=\"1\"/>"_s.arg(i + 1).arg(width);
        }
        return text.isEmpty() ? text : u"<cols>"_s + text + u"</cols>\n"_s;
    }

    template <typename WriteCell>
    void writeRow(qsizetype line, const WriteCell &cell)
    {
        line_ = QByteArray::number(line + 1);
        cells_ += "<row r=\"" + line_ + "\">";
        for (qsizetype column = 0; column < table_.columns.size(); ++column)
            cell(column);
        cells_ += "</row>\n";
    }

    void writeCell(qsizetype row, qsizetype column, const QVariant &value)
    {
        if (!value.isValid())
            return;
        constexpr int firstYear = 1900; // a spreadsheet's calendar knows no earlier one
        if (isNumber(value)) {
            const int places = placesOf(value, table_.columns[column]);
            addCell(column, style(numberFormat(places, table_.columns[column].currency)), {},
                    QByteArray::number(roundDecimal(value.toDouble(), places), 'g', 16));
        } else if (const QDate date = value.toDate();
                   value.metaType().id() == QMetaType::QDate && date.year() >= firstYear) {
            addCell(column, style(u"dd/mm/yyyy"_s), {}, QByteArray::number(dayNumber(date)));
        } else {
            writeText(row, column, plainText(value), 0);
        }
    }

    // `row` from 0 for the table's first row, -1 for the captions.
    void writeText(qsizetype row, qsizetype column, const QString &text, int style)
    {
        if (text.isEmpty())
            return;
        if (text.size() > longestText)
            throw Error(core::tr("Il testo della riga %1, colonna \"%2\", supera i 32.767 caratteri ammessi da Excel. "
                                 "Esportare in CSV.")
                            .arg(row + 1)
                            .arg(table_.columns[column].header));
        auto known = texts_.constFind(text);
        if (known == texts_.constEnd())
            known = texts_.insert(text, static_cast<int>(texts_.size()));
        addCell(column, style, " t=\"s\"", QByteArray::number(*known));
    }

    void addCell(qsizetype column, int style, const QByteArray &type, const QByteArray &value)
    {
        cells_ += "<c r=\"" + letters_[column].toLatin1() + line_ + "\" s=\"" + QByteArray::number(style) + '"' + type +
                  "><v>" + value + "</v></c>";
    }

    int style(const QString &format)
    {
        if (!formats_.contains(format))
            formats_.append(format);
        return firstFormatStyle + static_cast<int>(formats_.indexOf(format));
    }

    const Table &table_;
    QByteArray cells_;
    QStringList letters_; // of each column
    QByteArray line_;     // number of the row being written
    QHash<QString, int> texts_;
    QStringList formats_;
};

} // namespace

QByteArray xlsxFile(const Table &table)
{
    if (table.rows.size() > mostRows)
        throw Error(core::tr("L'elenco ha più righe (%1) di quante ne contenga un foglio di Excel. Esportare in CSV.")
                        .arg(table.rows.size()));
    Sheet sheet(table);
    ZipFile file;
    file.add("[Content_Types].xml", contentTypes);
    file.add("_rels/.rels", packageRelations);
    file.add("xl/workbook.xml", workbookPart.arg(xmlText(sheetName(table.title))).toUtf8());
    file.add("xl/_rels/workbook.xml.rels", workbookRelations);
    file.add("xl/worksheets/sheet1.xml", sheet.written());
    file.add("xl/sharedStrings.xml", sheet.texts());
    file.add("xl/styles.xml", sheet.styles());
    return file.finished();
}

} // namespace core
