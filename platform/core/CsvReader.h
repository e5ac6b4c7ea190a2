#pragma once
#include <QIODevice>
#include <QStringDecoder>
#include <QStringList>

/// Reading CSV files of whatever origin and size: a piece of the file at a time is in memory.
namespace core {

class Progress;

enum class CsvEncoding
{
    Utf8,
    Utf16, ///< with its byte order mark
    Windows1252
};

struct CsvFormat
{
    QChar separator = u';';
    CsvEncoding encoding = CsvEncoding::Utf8;
};

struct CsvRecord
{
    int line = 0; ///< of the file, from 1, where the record begins
    QStringList cells;
};

/// The separators that a file may have.
inline const QString csvSeparators = QStringLiteral(";,\t|");

/// The encoding from the byte order mark, else UTF-8 where the bytes are valid as such, else Windows-1252; the
/// separator that divides the first records into the most columns of equal number, or the one that a first line
/// "sep=" names. Goes through the whole of `device`, which is open; `progress` counts kilobytes. Throws core::Error and
/// core::Cancelled.
CsvFormat detectCsvFormat(QIODevice &device, Progress &progress);

/// Reads the records of a file one after the other. Quoted cells may hold separators, doubled quotes and line breaks
/// (which arrive as "\n"); a quote within an unquoted cell is a character like others. Empty lines and a first line
/// "sep=" are left out.
class CsvReader
{
public:
    /// Reads `device`, which is open, from its beginning; nobody else may use it meanwhile. Throws core::Error.
    CsvReader(QIODevice &device, const CsvFormat &format);

    /// Takes the next record; false when there is none. Throws core::Error with the line when a quote is never closed
    /// and when a record is longer than any record can be.
    bool read(CsvRecord &record);

    /// Bytes of the file that have been looked at.
    qint64 position() const { return position_; }

private:
    bool atEnd();
    void readPiece();
    bool isLineEnd() const;
    QString readCell();
    void readQuoted(QString &cell);
    void append(QString &cell, QStringView text) const;
    bool takeSeparator();
    void takeLineEnd();
    CsvRecord readRecord();

    QIODevice &device_;
    CsvFormat format_;
    QStringDecoder decoder_;
    qint64 position_ = 0;
    QString text_; // the piece that is being read
    qsizetype place_ = 0;
    int line_ = 1;
};

} // namespace core
