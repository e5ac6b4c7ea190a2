#include "benchmark/Bench.h"

#include "host/DatabaseSetup.h"
#include "host/start/FirstRows.h"
#include "magazzino/MMGUtils.h"
#include "platform/core/Log.h"
#include "platform/data/Connection.h"

#include <cstdio>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

void tell(const QString &text)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

} // namespace

Bench::Bench(const DataSize &dataSize, const QStringList &wanted)
    : size(dataSize)
    , wanted_(wanted)
{
    core::setLogFile(folder_.filePath(u"corvane.log"_s));
    address_.file = folder_.filePath(u"bench.fdb"_s);
}

bool Bench::isWanted(const QString &group) const
{
    return wanted_.isEmpty() || wanted_.contains(group);
}

void Bench::createDatabase()
{
    host::createHostDatabase(address_, true);
    restart();
    host::insertDemoModuleData(ModuleConnection());
    makeArticles(ModuleConnection(), 1, size.articles);
}

void Bench::restart()
{
    program_.reset();
    program_ = std::make_unique<Program>(address_);
    startModule();
}

void Bench::fill(int first, int last) const
{
    const double time = milliseconds([&] { makeDocuments(ModuleConnection(), size, first, last); });
    tell(u"documents %1 to %2 of each kind: %3 s"_s.arg(first).arg(last).arg(time / 1000, 0, 'f', 1));
}

int firstKey(const QString &table, const QString &key)
{
    return ModuleConnection().select(u"SELECT MIN(%2) AS K FROM %1"_s.arg(table, key)).integer(0, u"K");
}

qint64 movements()
{
    return ModuleConnection().select(u"SELECT COUNT(*) AS N FROM MOVI_MAGA"_s).at(0, u"N").toLongLong();
}

void Bench::add(const Pair &pair, const Figure &figure)
{
    if (network_) {
        network_->measure(pair, figure.workload);
        return;
    }
    figures_.append(compare(pair, figure));
    tell(u"%1: %2 ms, floor %3 ms"_s.arg(figure.workload)
             .arg(figures_.last().median, 0, 'f', 2)
             .arg(figures_.last().floor, 0, 'f', 2));
}

// What may grow with the movements, and what must not.
void Bench::measureGrowing()
{
    if (isWanted(u"saves"_s))
        measureSaves(*this);
    if (isWanted(u"opening"_s))
        measureOpening(*this);
    if (isWanted(u"typing"_s))
        measureTyping(*this);
    if (isWanted(u"keys"_s))
        measureKeySearches(*this);
    if (isWanted(u"inventories"_s))
        measureInventories(*this);
    if (isWanted(u"levels"_s))
        measureLevelReports(*this);
    if (isWanted(u"lists"_s))
        measureLists(*this);
    if (isWanted(u"begin"_s))
        measureBegin(*this);
}

void Bench::measureStart()
{
    program_.reset();
    program_ = std::make_unique<Program>(address_);
    add({.program = [this] { startModule(); },
         .prepare =
             [this] {
                 program_.reset();
                 program_ = std::make_unique<Program>(address_);
             }},
        {.workload = u"start of the module"_s, .target = 300, .milliseconds = true});
}

DataSize Bench::firstPart(const DataSize &whole)
{
    return whole.articles > large.articles ? large : DataSize{whole.articles, whole.documents / 2};
}

void Bench::growTo(const DataSize &whole)
{
    const DataSize before = std::exchange(size, whole);
    const bool isMuch = size.articles > before.articles;
    // The measured attachments hold on to what they have prepared.
    if (isMuch) {
        bare_.reset();
        restart();
        makeArticles(ModuleConnection(), before.articles + 1, size.articles);
        setIndexes(ModuleConnection(), false);
    }
    fill(before.documents + 1, size.documents);
    if (isMuch) {
        setIndexes(ModuleConnection(), true);
        restart();
        bare_ = std::make_unique<Bare>(address_);
    }
}

QString Bench::growthTable(const QList<Figure> &former, int times) const
{
    // The floor's own growth tells what is the engine's, or a disturbance of one of the two halves.
    QString text = u"\n%1 times the documents and movements: time before, after, growth, floor's growth\n"_s.arg(times);
    for (const Figure &before : former) {
        for (const Figure &after : figures_) {
            if (after.workload == before.workload)
                text += u"%1%2 ms%3 ms%4%5\n"_s.arg(before.workload, -46)
                            .arg(before.median, 10, 'f', 2)
                            .arg(after.median, 10, 'f', 2)
                            .arg(after.median / before.median, 8, 'f', 2)
                            .arg(after.floor / before.floor, 8, 'f', 2);
        }
    }
    return text;
}

QString Bench::run()
{
    const DataSize whole = std::exchange(size, firstPart(size));
    createDatabase();
    bare_ = std::make_unique<Bare>(address_);
    fill(1, size.documents);
    measureGrowing();
    const QList<Figure> former = std::exchange(figures_, {});
    const int times = whole.documents / size.documents;
    growTo(whole);
    measureGrowing();
    if (isWanted(u"pdf"_s))
        measurePdf(*this);
    if (isWanted(u"files"_s))
        measureFiles(*this);
    if (isWanted(u"start"_s)) {
        measureStart();
        measureWindow(*this);
    }
    // Last, since it rewrites half of the movements.
    if (isWanted(u"revaluation"_s))
        measureRevaluation(*this);
    const QString count = u"%1 articles, %2 documents of each kind, %3 movements\n"_s.arg(size.articles)
                              .arg(size.documents)
                              .arg(movements());
    return count + table(figures_) + growthTable(former, times);
}

} // namespace bench
