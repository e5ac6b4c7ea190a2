// An office's long day in fast motion: what a process gains that is never closed.
#include "benchmark/Bench.h"

#include "magazzino/ui/MMGInserimentoDocumento.h"
#include "platform/core/Error.h"
#include "platform/ui/Dialogs.h"

#include <QAction>
#include <QDir>
#include <QDirIterator>

#include <malloc.h>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr double mostPerDocument = 1; // kB
// Over fewer documents the page caches and the allocator's own rounding are more than what is looked for.
constexpr int fewestForMemory = 1'000;

/// What a process has at one moment.
struct Holdings
{
    long resident = 0; // kB
    qsizetype allocated = 0;
    qsizetype handles = 0;
    QStringList files;
};

QStringList filesIn(const QString &folder)
{
    QStringList files;
    for (QDirIterator it(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
         it.hasNext();)
        files.append(it.next());
    files.sort();
    return files;
}

Holdings holdings(const QString &folder)
{
    malloc_trim(0);
    return {.resident = memory("VmRSS"),
            .allocated = static_cast<qsizetype>(mallinfo2().uordblks),
            .handles =
                QDir(u"/proc/self/fd"_s).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).size(),
            .files = filesIn(folder) + QDir::temp().entryList(QDir::AllEntries | QDir::Hidden | QDir::System)};
}

void work(const Bench &bench, int key)
{
    const QString action = u"actInserimentoDdTScarico"_s;
    auto &form = bench.program().form<TMMGInserimentoDocumento>(action);
    form.ApriRecord(key);
    settle();
    form.DataChanged();
    if (!form.SalvaRecord())
        throw core::Error(u"Not saved: %1"_s.arg(key));
    form.command(u"actSalvaPDF"_s)->trigger();
    form.closeForm();
    settle();
}

} // namespace

QString Bench::runDay(int documents)
{
    createDatabase();
    fill(1, size.documents);
    ui::setSaveFileChooser(
        [pdf = filePath(u"documento.pdf"_s)](QWidget *, const ui::SaveFileRequest &) { return pdf; });
    const int first = firstKey(u"DDT_SCARICO"_s, u"IDDDT_SCARICO"_s);
    const int warmUp = std::max(1, documents / 10);
    Holdings before;
    const double time = milliseconds([&] {
        for (int i = 0; i < documents; ++i) {
            if (i == warmUp)
                before = holdings(folder_.path());
            work(*this, first + i % size.documents);
        }
    });
    const Holdings after = holdings(folder_.path());
    ui::setSaveFileChooser({});
    const int counted = documents - warmUp;
    const double resident = static_cast<double>(after.resident - before.resident) / counted;
    QString text =
        u"%1 documents opened, saved, printed and closed in %2 s. For each of the last %3: %4 kB more resident, %5 kB "
        "more allocated. Handles %6 before, %7 after; files %8 before, %9 after.\n"_s.arg(documents)
            .arg(time / 1000, 0, 'f', 0)
            .arg(counted)
            .arg(resident, 0, 'f', 3)
            .arg(static_cast<double>(after.allocated - before.allocated) / 1024 / counted, 0, 'f', 3)
            .arg(before.handles)
            .arg(after.handles)
            .arg(before.files.size())
            .arg(after.files.size());
    const bool grows = counted >= fewestForMemory && resident > mostPerDocument;
    if (grows || after.handles != before.handles || after.files != before.files)
        throw core::Error(u"Too much: "_s + text);
    return text;
}

} // namespace bench
