#include "tests/kills/Runner.h"

#include <QProcess>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace kills {

namespace {

constexpr int limit = 600'000; // milliseconds, also for a busy machine

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
    ended.hung = !process.waitForFinished(limit);
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
