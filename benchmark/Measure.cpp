#include "benchmark/Measure.h"

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

double median(QList<double> times)
{
    std::sort(times.begin(), times.end());
    return times.isEmpty() ? 0 : times[(times.size() - 1) / 2];
}

// The peak counts from here on; where the system refuses, it counts from the program's start.
void forgetPeakMemory()
{
    QFile file(u"/proc/self/clear_refs"_s);
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

QString number(double value, int places)
{
    return value > 0 ? QString::number(value, 'f', places) : u"-"_s;
}

QString line(const QStringList &cells)
{
    static const QList<int> widths = {46, 11, 11, 8, 11, 11, 10};
    QString text = cells.first().leftJustified(widths.first());
    for (int i = 1; i < cells.size(); ++i)
        text += cells[i].rightJustified(widths[i]);
    return text + u'\n';
}

// Milliseconds after which no further run of a workload begins: at ten million movements a single one takes minutes. Of
// two the first would find no page read, and its floor all of them.
constexpr qint64 enough = 60'000;
constexpr int fewest = 2;

} // namespace

long memory(const QByteArray &kind)
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(kind + ':'))
            return line.mid(kind.size() + 1).simplified().split(' ').constFirst().toLong();
    }
    return 0;
}

double milliseconds(const Work &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

Figure compare(const Pair &pair, Figure figure)
{
    QList<double> program;
    QList<double> floor;
    QElapsedTimer spent;
    spent.start();
    for (int run = 0; run < pair.runs && (run < fewest || !spent.hasExpired(enough)); ++run) {
        if (pair.prepare)
            pair.prepare();
        forgetPeakMemory();
        program.append(milliseconds(pair.program));
        figure.memory = std::max(figure.memory, memory("VmHWM"));
        if (pair.floor)
            floor.append(milliseconds(pair.floor));
    }
    figure.median = median(program) / figure.pages;
    figure.floor = median(floor) / figure.pages;
    return figure;
}

QString table(const QList<Figure> &figures)
{
    QString text =
        line({u"workload"_s, u"median ms"_s, u"floor ms"_s, u"ratio"_s, u"target"_s, u"rows/s"_s, u"peak MB"_s});
    for (const Figure &figure : figures) {
        const double seconds = figure.median * figure.pages / 1000;
        const QString target =
            figure.target > 0 ? QString::number(figure.target) + (figure.milliseconds ? u" ms"_s : QString()) : u"-"_s;
        text += line({figure.workload, number(figure.median, 2), number(figure.floor, 2), number(figure.ratio(), 2),
                      target, number(static_cast<double>(figure.rows) / seconds, 0),
                      number(static_cast<double>(figure.memory) / 1024, 0)});
    }
    return text;
}

} // namespace bench
