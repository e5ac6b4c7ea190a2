#pragma once
#include <QByteArray>

namespace core {

/// A zip archive made in memory, as office files are: compressed members of at most 4 GB in all.
class ZipFile
{
public:
    /// `name` in ASCII, with slashes. Throws core::Error when the archive would become too large.
    void add(const QByteArray &name, const QByteArray &content);

    /// The archive; nothing can be added any more.
    QByteArray finished();

private:
    QByteArray members_;
    QByteArray directory_;
    quint16 count_ = 0;
};

} // namespace core
