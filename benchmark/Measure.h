#pragma once
#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>

/// Times, memory and the table of them.
namespace bench {

using Work = std::function<void()>;

/// One line of the table. Times are medians in milliseconds.
struct Figure
{
    QString workload;
    double median = 0;
    double floor = 0; ///< 0 where there is none
    qint64 rows = 0;  ///< read or written by the workload, 0 where that says nothing
    long memory = 0;  ///< highest resident memory during the workload, kB; 0 where the system does not tell
    int pages = 1;    ///< both times are of one page
    double target = 0;
    bool milliseconds = false; ///< the target is a time and not a ratio

    double ratio() const { return floor > 0 ? median / floor : 0; }
};

struct Pair
{
    Work program;
    Work floor;   ///< may be empty
    Work prepare; ///< before each run of the program, not timed; may be empty
    int runs = 7; ///< at most: none begins after a minute
};

double milliseconds(const Work &work);
/// What the system tells of this process's memory in kB: "VmRSS" for what is resident now, "VmHWM" for the most that
/// was. 0 where it does not tell.
long memory(const QByteArray &kind);
/// Runs the program's way and the bare one by turns, so that a disturbance meets both, and fills in the medians.
Figure compare(const Pair &pair, Figure figure);

/// The lines as a text table.
QString table(const QList<Figure> &figures);

} // namespace bench
