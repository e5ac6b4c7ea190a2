#include "platform/core/CsvReader.h"

#include "platform/core/Error.h"
#include "platform/core/Progress.h"
#include "platform/core/Translation.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace core {

namespace {

constexpr qint64 kilobyte = 1024;
constexpr qint64 pieceSize = 256 * kilobyte;
// Beyond these it is no list of articles or firms, and reading on would only fill the memory.
constexpr qsizetype longestCell = 1'000'000;
constexpr qsizetype mostCells = 10'000;

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

QByteArray pieceOf(QIODevice &device)
{
    QByteArray piece(pieceSize, Qt::Uninitialized);
    const qint64 count = device.read(piece.data(), pieceSize);
    if (count < 0)
        throw Error(core::tr("Impossibile leggere il file."), device.errorString());
    piece.truncate(count);
    return piece;
}

void rewind(QIODevice &device)
{
    if (!device.seek(0))
        throw Error(core::tr("Impossibile leggere il file."), device.errorString());
}

bool isUtf8(QIODevice &device, Progress &progress)
{
    rewind(device);
    QStringDecoder decoder(QStringDecoder::Utf8);
    qint64 done = 0;
    for (QByteArray piece = pieceOf(device); !piece.isEmpty() && !decoder.hasError(); piece = pieceOf(device)) {
        const QString text = decoder.decode(piece);
        Q_UNUSED(text)
        done += piece.size();
        progress.step(static_cast<int>(done / kilobyte));
    }
    return !decoder.hasError();
}

CsvEncoding detectEncoding(QIODevice &device, Progress &progress)
{
    rewind(device);
    const QByteArray mark = device.peek(2);
    if (mark == "\xFF\xFE" || mark == "\xFE\xFF")
        return CsvEncoding::Utf16;
    return isUtf8(device, progress) ? CsvEncoding::Utf8 : CsvEncoding::Windows1252;
}

// The separator of a first line as Excel writes it; null without one.
QChar namedSeparator(const QString &text)
{
    const bool named =
        text.startsWith(u"sep=", Qt::CaseInsensitive) && text.size() > 5 && (text[5] == u'\r' || text[5] == u'\n');
    return named && csvSeparators.contains(text[4]) ? text[4] : QChar();
}

QStringDecoder decoderFor(CsvEncoding encoding)
{
    // Both drop the byte order mark.
    return QStringDecoder(encoding == CsvEncoding::Utf16 ? QStringDecoder::Utf16 : QStringDecoder::Utf8);
}

// How well the separator divides the records: columns of the first one, where nine out of ten have as many; else 1.
qsizetype columnsWith(QIODevice &device, const CsvFormat &format)
{
    constexpr int sample = 50;
    QList<qsizetype> columns;
    try {
        CsvReader reader(device, format);
        for (CsvRecord record; columns.size() < sample && reader.read(record);)
            columns.append(record.cells.size());
    } catch (const Error &) {
        return 0; // quotes that do not fit speak against this separator
    }
    if (columns.isEmpty())
        return 0;
    return columns.count(columns.first()) * 10 >= columns.size() * 9 ? columns.first() : 1;
}

} // namespace

CsvFormat detectCsvFormat(QIODevice &device, Progress &progress)
{
    progress.setTotal(static_cast<int>(device.size() / kilobyte));
    CsvFormat format;
    format.encoding = detectEncoding(device, progress);
    rewind(device);
    QStringDecoder decoder = decoderFor(format.encoding);
    if (const QChar named = namedSeparator(decoder.decode(device.peek(32))); !named.isNull()) {
        format.separator = named;
        return format;
    }
    qsizetype most = 1;
    CsvFormat tried = format;
    for (const QChar separator : csvSeparators) {
        tried.separator = separator;
        if (const qsizetype columns = columnsWith(device, tried); columns > most) {
            most = columns;
            format.separator = separator;
        }
    }
    return format;
}

CsvReader::CsvReader(QIODevice &device, const CsvFormat &format)
    : device_(device)
    , format_(format)
    , decoder_(decoderFor(format.encoding))
{
    rewind(device);
    readPiece();
    if (!namedSeparator(text_).isNull())
        readRecord();
}

bool CsvReader::read(CsvRecord &record)
{
    while (!atEnd()) {
        record = readRecord();
        if (record.cells.size() > 1 || !record.cells.first().trimmed().isEmpty())
            return true;
    }
    return false;
}

void CsvReader::readPiece()
{
    text_.clear();
    place_ = 0;
    // A piece may hold no more than a part of a character.
    while (text_.isEmpty()) {
        const QByteArray piece = pieceOf(device_);
        if (piece.isEmpty())
            return;
        position_ += piece.size();
        text_ = format_.encoding == CsvEncoding::Windows1252 ? fromWindows1252(piece) : decoder_.decode(piece);
    }
}

bool CsvReader::atEnd()
{
    if (place_ >= text_.size())
        readPiece();
    return place_ >= text_.size();
}

CsvRecord CsvReader::readRecord()
{
    CsvRecord record{line_, {}};
    do {
        if (record.cells.size() == mostCells)
            throw Error(core::tr("Riga %1: le colonne sono più di %2.").arg(record.line).arg(mostCells));
        record.cells.append(readCell());
    } while (takeSeparator());
    takeLineEnd();
    return record;
}

bool CsvReader::isLineEnd() const
{
    return text_[place_] == u'\n' || text_[place_] == u'\r';
}

QString CsvReader::readCell()
{
    QString cell;
    if (!atEnd() && text_[place_] == u'"')
        readQuoted(cell);
    while (!atEnd() && text_[place_] != format_.separator && !isLineEnd()) {
        const qsizetype begin = place_;
        while (place_ < text_.size() && text_[place_] != format_.separator && !isLineEnd())
            ++place_;
        append(cell, QStringView(text_).mid(begin, place_ - begin));
    }
    return cell;
}

void CsvReader::readQuoted(QString &cell)
{
    const int firstLine = line_;
    for (++place_; !atEnd();) {
        if (text_[place_] == u'"') {
            ++place_;
            if (atEnd() || text_[place_] != u'"')
                return;
            append(cell, u"\"");
            ++place_;
        } else if (isLineEnd()) {
            takeLineEnd();
            append(cell, u"\n");
        } else {
            const qsizetype begin = place_;
            while (place_ < text_.size() && text_[place_] != u'"' && !isLineEnd())
                ++place_;
            append(cell, QStringView(text_).mid(begin, place_ - begin));
        }
    }
    throw Error(core::tr("Riga %1: le virgolette aperte non vengono mai chiuse.").arg(firstLine));
}

void CsvReader::append(QString &cell, QStringView text) const
{
    if (cell.size() + text.size() > longestCell)
        throw Error(
            core::tr(
                "Riga %1: un testo supera il milione di caratteri; forse le sue virgolette non vengono mai chiuse.")
                .arg(line_));
    cell.append(text);
}

bool CsvReader::takeSeparator()
{
    if (atEnd() || text_[place_] != format_.separator)
        return false;
    ++place_;
    return true;
}

void CsvReader::takeLineEnd()
{
    if (atEnd())
        return;
    const bool isReturn = text_[place_] == u'\r';
    ++place_;
    if (isReturn && !atEnd() && text_[place_] == u'\n')
        ++place_;
    ++line_;
}

} // namespace core
