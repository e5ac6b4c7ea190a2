#pragma once
#include "platform/core/CsvReader.h"

#include <QDateTime>
#include <QFile>

#include <functional>

namespace core {

/// A CSV file on the disk, however long. Whoever needs its records goes through them anew.
class CsvFile
{
public:
    /// Opens it. Throws core::Error when it cannot be read or is a spreadsheet program's own file.
    explicit CsvFile(const QString &path);

    /// As it was given.
    QString path() const { return file_.fileName(); }
    /// So long that reading it is worth a progress dialog.
    bool isLong() const;

    /// See detectCsvFormat().
    CsvFormat detectFormat(Progress &progress);
    /// The records with which it begins, at most `count`.
    QList<CsvRecord> first(int count, const CsvFormat &format);
    /// Hands the records to `use`, the header line, if any, included; `progress` counts kilobytes. Throws what `use`
    /// throws, core::Cancelled, and core::Error when the file cannot be read as CSV or has been changed since it was
    /// opened.
    void forEach(const CsvFormat &format, Progress &progress, const std::function<void(const CsvRecord &)> &use);

private:
    void requireUnchanged();

    QFile file_;
    qint64 size_;
    QDateTime changed_;
};

} // namespace core
