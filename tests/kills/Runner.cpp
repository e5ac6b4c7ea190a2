#include "tests/kills/Runner.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace kills {

namespace {

constexpr int idleLimit = 30'000;   // milliseconds without work
constexpr int wholeLimit = 600'000; // milliseconds

/// What the threads of a session do, from the system's list of processes.
struct Activity
{
    qint64 ticks = 0;    ///< processor time so far
    bool isBusy = false; ///< one of them works, waits for its turn to work, or waits for the disk
};

// The fields behind the program's name, which may hold spaces.
QList<QByteArray> statusOf(const QString &path)
{
    QFile file(path + u"/stat"_s);
    const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    return text.mid(text.lastIndexOf(')') + 2).split(' ');
}

Activity activityOf(qint64 session)
{
    enum Field
    {
        State = 0,
        Session = 3,
        UserTime = 11,
        SystemTime = 12,
        Count = 13
    };
    Activity activity;
    const QStringList processes = QDir(u"/proc"_s).entryList({u"[1-9]*"_s}, QDir::Dirs);
    for (const QString &process : processes) {
        const QString path = u"/proc/"_s + process;
        const QList<QByteArray> status = statusOf(path);
        if (status.size() < Count || status[Session].toLongLong() != session)
            continue;
        activity.ticks += status[UserTime].toLongLong() + status[SystemTime].toLongLong();
        const QStringList threads = QDir(path + u"/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString &thread : threads) {
            const QByteArray state = statusOf(path + u"/task/"_s + thread).value(State);
            activity.isBusy = activity.isBusy || state == "R" || state == "D";
        }
    }
    return activity;
}

// False when it hangs.
bool waitForEnd(QProcess &process)
{
    constexpr int look = 500;         // milliseconds
    constexpr qint64 awakeTicks = 10; // timers that only look around use less in the whole limit
    QElapsedTimer all;
    QElapsedTimer idle;
    all.start();
    idle.start();
    for (qint64 ticks = 0; !process.waitForFinished(look);) {
        const Activity now = activityOf(process.processId());
        if (now.isBusy || now.ticks > ticks + awakeTicks) {
            ticks = now.ticks;
            idle.restart();
        }
        if (idle.elapsed() > idleLimit || all.elapsed() > wholeLimit)
            return false;
    }
    return true;
}

} // namespace

Ended run(const QStringList &command, const QProcessEnvironment &variables)
{
    QProcess process;
    process.setProcessEnvironment(variables);
    process.setProcessChannelMode(QProcess::MergedChannels);
    // A group of its own: the cut takes the programs that it has started along.
    process.setChildProcessModifier([] {
        setsid();
        prctl(PR_SET_PDEATHSIG, SIGKILL);
    });
    process.start(command.first(), command.mid(1));
    const qint64 group = process.processId();
    Ended ended;
    ended.hung = !waitForEnd(process);
    if (ended.hung) {
        ::kill(-static_cast<pid_t>(group), SIGKILL);
        process.waitForFinished();
    }
    ended.killed = process.exitStatus() == QProcess::CrashExit;
    ended.code = process.exitCode();
    ended.output = QString::fromUtf8(process.readAll()).trimmed();
    return ended;
}

} // namespace kills
