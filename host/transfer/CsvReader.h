#pragma once
#include <QByteArray>
#include <QList>
#include <QStringList>

/// Reading CSV files of whatever origin.
namespace host {

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
/// "sep=" names.
CsvFormat detectCsvFormat(const QByteArray &content);

QString decodeCsv(const QByteArray &content, CsvEncoding encoding);

/// The records of a decoded file, at most `limit` of them. Quoted cells may hold separators, doubled quotes and line
/// breaks (which arrive as "\n"); a quote within an unquoted cell is a character like others. Empty lines and a line
/// "sep=" are left out. Throws core::Error with the line when a quote is never closed.
QList<CsvRecord> readCsv(const QString &text, QChar separator, int limit = 0x7fffffff);

} // namespace host
