#include "host/transfer/CsvReader.h"

#include "platform/core/Error.h"

#include <QStringConverter>

#include <array>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// Windows-1252 differs from Latin-1 between 0x80 and 0x9F only; the five codes that it leaves free stay as they are.
constexpr std::array<char16_t, 32> windowsCharacters = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                        0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                        0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                        0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

QString fromWindows1252(const QByteArray &content)
{
    QString text = QString::fromLatin1(content);
    for (QChar &c : text) {
        if (c.unicode() >= 0x80 && c.unicode() < 0xA0)
            c = windowsCharacters[c.unicode() - 0x80];
    }
    return text;
}

bool isUtf8(const QByteArray &content)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(content);
    Q_UNUSED(text)
    return !decoder.hasError();
}

CsvEncoding detectEncoding(const QByteArray &content)
{
    if (content.startsWith("\xFF\xFE") || content.startsWith("\xFE\xFF"))
        return CsvEncoding::Utf16;
    return isUtf8(content) ? CsvEncoding::Utf8 : CsvEncoding::Windows1252;
}

// The separator of a first line as Excel writes it; null without one.
QChar namedSeparator(const QString &text)
{
    const bool named =
        text.startsWith(u"sep=", Qt::CaseInsensitive) && text.size() > 5 && (text[5] == u'\r' || text[5] == u'\n');
    return named && csvSeparators.contains(text[4]) ? text[4] : QChar();
}

// How well `separator` divides the records: columns of the first one, where nine out of ten have as many; else 1.
qsizetype columnsWith(const QString &text, QChar separator)
{
    constexpr int sample = 50;
    QList<CsvRecord> records;
    try {
        records = readCsv(text, separator, sample);
    } catch (const core::Error &) {
        return 0; // quotes that do not fit speak against this separator
    }
    if (records.isEmpty())
        return 0;
    const qsizetype columns = records.first().cells.size();
    const auto equal = std::count_if(records.begin(), records.end(),
                                     [columns](const CsvRecord &record) { return record.cells.size() == columns; });
    return equal * 10 >= records.size() * 9 ? columns : 1;
}

// One pass over the text; a cell begins after a separator or a line end.
class Reader
{
public:
    Reader(const QString &text, QChar separator)
        : text_(text)
        , separator_(separator)
    {
    }

    bool atEnd() const { return place_ >= text_.size(); }

    CsvRecord readRecord()
    {
        CsvRecord record{line_, {}};
        do
            record.cells.append(readCell());
        while (takeSeparator());
        takeLineEnd();
        return record;
    }

private:
    bool isLineEnd() const { return text_[place_] == u'\n' || text_[place_] == u'\r'; }

    QString readCell()
    {
        QString cell;
        if (!atEnd() && text_[place_] == u'"')
            cell = readQuoted();
        const qsizetype begin = place_;
        while (!atEnd() && text_[place_] != separator_ && !isLineEnd())
            ++place_;
        return cell.append(QStringView(text_).mid(begin, place_ - begin));
    }

    QString readQuoted()
    {
        const int firstLine = line_;
        QString cell;
        for (++place_; !atEnd();) {
            if (text_[place_] == u'"') {
                ++place_;
                if (atEnd() || text_[place_] != u'"')
                    return cell;
                cell += text_[place_++];
            } else if (isLineEnd()) {
                takeLineEnd();
                cell += u'\n';
            } else {
                cell += text_[place_++];
            }
        }
        throw core::Error(u"Riga %1: le virgolette aperte non vengono mai chiuse."_s.arg(firstLine));
    }

    bool takeSeparator()
    {
        if (atEnd() || text_[place_] != separator_)
            return false;
        ++place_;
        return true;
    }

    void takeLineEnd()
    {
        if (atEnd())
            return;
        if (text_[place_] == u'\r' && place_ + 1 < text_.size() && text_[place_ + 1] == u'\n')
            ++place_;
        ++place_;
        ++line_;
    }

    const QString &text_;
    QChar separator_;
    qsizetype place_ = 0;
    int line_ = 1;
};

} // namespace

QString decodeCsv(const QByteArray &content, CsvEncoding encoding)
{
    if (encoding == CsvEncoding::Windows1252)
        return fromWindows1252(content);
    // Both drop the byte order mark.
    QStringDecoder decoder(encoding == CsvEncoding::Utf8 ? QStringDecoder::Utf8 : QStringDecoder::Utf16);
    return decoder.decode(content);
}

CsvFormat detectCsvFormat(const QByteArray &content)
{
    CsvFormat format;
    format.encoding = detectEncoding(content);
    const QString text = decodeCsv(content, format.encoding);
    if (const QChar named = namedSeparator(text); !named.isNull()) {
        format.separator = named;
        return format;
    }
    qsizetype most = 1;
    for (const QChar separator : csvSeparators) {
        const qsizetype columns = columnsWith(text, separator);
        if (columns > most) {
            most = columns;
            format.separator = separator;
        }
    }
    return format;
}

QList<CsvRecord> readCsv(const QString &text, QChar separator, int limit)
{
    QList<CsvRecord> records;
    Reader reader(text, separator);
    if (!namedSeparator(text).isNull())
        reader.readRecord();
    while (!reader.atEnd() && records.size() < limit) {
        CsvRecord record = reader.readRecord();
        if (record.cells.size() > 1 || !record.cells.first().trimmed().isEmpty())
            records.append(std::move(record));
    }
    return records;
}

} // namespace host
