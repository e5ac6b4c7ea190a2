#include "platform/core/CsvFile.h"

#include "platform/core/Error.h"
#include "platform/core/Progress.h"
#include "platform/core/Translation.h"

using namespace Qt::StringLiterals;

namespace core {

namespace {
constexpr qint64 kilobyte = 1024;
}

CsvFile::CsvFile(const QString &path)
    : file_(path)
{
    if (!file_.open(QIODevice::ReadOnly))
        throw Error(core::tr("Impossibile leggere il file \"%1\".").arg(path), file_.errorString());
    if (file_.peek(4) == "PK\x03\x04")
        throw Error(
            core::tr("Il file \"%1\" è una cartella di lavoro di un foglio di calcolo: salvarla prima come CSV.")
                .arg(path));
    size_ = file_.size();
    changed_ = file_.fileTime(QFile::FileModificationTime);
}

bool CsvFile::isLong() const
{
    constexpr qint64 aMoment = 1024 * kilobyte;
    return size_ > aMoment;
}

CsvFormat CsvFile::detectFormat(Progress &progress)
{
    progress.setText(core::tr("Lettura del file…"));
    return detectCsvFormat(file_, progress);
}

QList<CsvRecord> CsvFile::first(int count, const CsvFormat &format)
{
    QList<CsvRecord> records;
    CsvReader reader(file_, format);
    for (CsvRecord record; records.size() < count && reader.read(record);)
        records.append(record);
    return records;
}

void CsvFile::forEach(const CsvFormat &format, Progress &progress, const std::function<void(const CsvRecord &)> &use)
{
    progress.setTotal(static_cast<int>(size_ / kilobyte));
    CsvReader reader(file_, format);
    for (CsvRecord record; reader.read(record);) {
        progress.step(static_cast<int>(reader.position() / kilobyte));
        use(record);
    }
    requireUnchanged();
}

void CsvFile::requireUnchanged()
{
    if (file_.size() != size_ || file_.fileTime(QFile::FileModificationTime) != changed_)
        throw Error(core::tr("Il file \"%1\" è stato cambiato nel frattempo: sceglierlo di nuovo.").arg(path()));
}

} // namespace core
