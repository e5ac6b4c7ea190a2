// What somebody meets who begins: the start page, and the search over everything.
#include "benchmark/Bench.h"

#include "host/StartOffers.h"
#include "host/ui/MainWindow.h"
#include "host/ui/StartPage.h"
#include "platform/core/Error.h"

#include <QMdiArea>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

// A word that is nowhere: every source looks through all that it looks through at a time.
void askAll(bool slow)
{
    const QList<host::SearchSource> sources = host::startOffers().searches;
    for (const host::SearchSource &source : sources) {
        if (source.isSlow == slow && !source.find(u"qzxjw"_s, {}).hits.isEmpty())
            throw core::Error(u"Found in "_s + source.caption);
    }
}

} // namespace

void measureBegin(Bench &bench)
{
    QMdiArea &area = bench.program().session().window().area();
    area.closeAllSubWindows();
    settle();
    auto *page = area.findChild<host::StartPage *>();
    if (!page || !page->isVisible())
        throw core::Error(u"There is no start page."_s);
    bench.add({.program =
                   [page] {
                       page->refresh();
                       settle();
                   },
               .floor =
                   [&bench] {
                       for (const QString &table : {u"BOLLE_CARICO"_s, u"DDT_SCARICO"_s, u"FATT_ACC"_s})
                           bench.bare().fetch(
                               u"SELECT FIRST 10 NUMERO, DATA FROM %1 ORDER BY ANNO DESC, NUMERO DESC"_s.arg(table));
                   }},
              {.workload = u"start page"_s, .target = 50, .milliseconds = true});
    bench.add({.program = [] { askAll(false); }}, {.workload = u"search everywhere, names and codes"_s});
    bench.add({.program = [] { askAll(true); }}, {.workload = u"search everywhere, rows of the newest documents"_s});
}

} // namespace bench
