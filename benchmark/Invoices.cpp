// Electronic invoices: from a stored invoice to its file.
#include "benchmark/Bench.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/fatturapa/Controlli.h"
#include "magazzino/fatturapa/Lettura.h"
#include "magazzino/fatturapa/Scrittura.h"
#include "platform/core/Error.h"
#include "platform/data/Connection.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int largeSet = 1000;
constexpr int smallSet = 100;

// Of the files' names, which have five letters or digits.
QString progressive(int number)
{
    return u"%1"_s.arg(number, 5, 10, QChar(u'0'));
}

void write(const fatturapa::Dati &data, const Bench &bench)
{
    const fatturapa::Composizione composed = fatturapa::esamina(data);
    if (!fatturapa::ammette(composed.riscontri))
        throw core::Error(u"Not an electronic invoice: "_s + composed.riscontri.first().testo);
    QFile file(bench.filePath(fatturapa::nomeFile(composed.fattura)));
    if (!file.open(QIODevice::WriteOnly) || file.write(fatturapa::scrivi(composed.fattura)) < 0)
        throw core::Error(file.errorString());
}

} // namespace

// Invoices are checked and written in one go, as a month's are; the reading before it is the floor. Nobody waits for
// the disk, whose time would be all that is seen.
void measureFiles(Bench &bench)
{
    const int count = bench.size.documents == large.documents ? largeSet : smallSet;
    const QList<int> keys = makeInvoices(ModuleConnection(), count);
    QList<fatturapa::Dati> read;
    const auto readAll = [&] {
        read.clear();
        for (int i = 0; i < keys.size(); ++i)
            read.append(fatturapa::leggi(keys[i], progressive(i)));
    };
    const auto writeAll = [&] {
        for (const fatturapa::Dati &data : std::as_const(read))
            write(data, bench);
    };
    bench.add({.program = writeAll, .floor = readAll, .prepare = readAll, .runs = 5},
              {.workload = u"file of an electronic invoice, beyond reading it"_s,
               .rows = qint64{count} * rowsPerDocument,
               .pages = count,
               .target = 2,
               .milliseconds = true});
}

} // namespace bench
