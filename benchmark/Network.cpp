#include "benchmark/Network.h"

#include "tests/support/FirebirdServer.h"
#include "tests/support/SlowLink.h"

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int runs = 3;
constexpr int delays[] = {0, 1, 5, 20};

QString line(const QString &first, const QStringList &cells)
{
    QString text = first.leftJustified(52);
    for (const QString &cell : cells)
        text += cell.rightJustified(12);
    return text + u'\n';
}

QStringList headings()
{
    QStringList texts = {u"first turns"_s, u"turns"_s};
    for (const int delay : delays)
        texts.append(u"%1 ms: ms"_s.arg(delay));
    return texts;
}

} // namespace

Network::Network()
    : server_(std::make_unique<test::FirebirdServer>())
    , link_(std::make_unique<test::SlowLink>(server_->address().port))
    , lines_({line(u"workload"_s, headings())})
{
}

Network::~Network() = default;

data::DatabaseAddress Network::address() const
{
    data::DatabaseAddress address = server_->address();
    address.port = link_->port();
    return address;
}

void Network::measure(const Pair &pair, const QString &workload)
{
    QStringList cells;
    QList<int> turns;
    for (const int delay : delays) {
        QList<double> times;
        for (int run = 0; run < runs; ++run) {
            link_->setDelay(std::chrono::milliseconds(0));
            if (pair.prepare)
                pair.prepare();
            link_->setDelay(std::chrono::milliseconds(delay));
            const int before = link_->turns();
            times.append(milliseconds(pair.program));
            turns.append(link_->turns() - before);
        }
        std::sort(times.begin(), times.end());
        cells.append(QString::number(times[runs / 2], 'f', 1));
    }
    link_->setDelay(std::chrono::milliseconds(0));
    const int first = turns.constFirst();
    std::sort(turns.begin(), turns.end());
    lines_.append(
        line(workload, QStringList{QString::number(first), QString::number(turns[turns.size() / 2])} + cells));
    std::fprintf(stderr, "%s", qUtf8Printable(lines_.constLast()));
}

} // namespace bench
