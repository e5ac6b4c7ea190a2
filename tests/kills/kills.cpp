// Kills the program in the middle of works that write, starts it again and counts what that start cannot put right.
//
// usage: kills COUNT [WORKLOAD...]   COUNT kills each, at moments spread evenly over the work; "upgrade" names every
//                                    workload that begins so, without names all run
#include "tests/kills/Workload.h"

#include "tests/support/Kit.h"

#include <csignal>
#include <sys/prctl.h>

namespace {

/// How a process came to its end.
struct Ended
{
    bool hung = false;
    bool killed = false;
    int code = -1;
    QString output;
};

// A program, with what it starts in a session of their own, to its end. One that does not end within ten minutes hangs
// and is killed.
Ended run(const QStringList &command, const QProcessEnvironment &variables)
{
    constexpr int limit = 600'000; // milliseconds, also for a busy machine
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

struct Result
{
    int kills = 0;
    int hangs = 0;
    int refused = 0; ///< the next run failed, or what it left is not whole
    int leftovers = 0;

    bool isGood() const { return kills > 0 && hangs + refused + leftovers == 0; }
};

/// The folders and the counting file of one cut.
class Place
{
public:
    Place()
    {
        QDir(base_.path()).mkdir(u"template"_s);
        renew();
    }

    QString original() const { return base_.filePath(u"template"_s); }
    QString work() const { return base_.filePath(u"work"_s); }
    QString home() const { return base_.filePath(u"home"_s); }
    QString counter() const { return base_.filePath(u"counter"_s); }

    void renew() const
    {
        for (const QString &folder : {work(), home()}) {
            QDir(folder).removeRecursively();
            QDir().mkpath(folder);
        }
        QFile::setPermissions(home(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        const QStringList files = QDir(original()).entryList(QDir::Files | QDir::Hidden);
        for (const QString &file : files)
            QFile::copy(original() + u'/' + file, work() + u'/' + file);
        core::saveFile(counter(), QByteArray(16, '\0'));
    }

    quint64 steps() const
    {
        quint64 count = 0;
        std::memcpy(&count, test::contentOf(counter()).constData(), sizeof count);
        return count;
    }

private:
    QTemporaryDir base_;
};

QProcessEnvironment environmentIn(const Place &place)
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    variables.insert(u"XDG_DATA_HOME"_s, place.home());
    variables.insert(u"XDG_RUNTIME_DIR"_s, place.home());
    variables.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    return variables;
}

// With `killAt` the library that counts steps is loaded first; 0 counts only.
QProcessEnvironment cutting(const Place &place, quint64 killAt)
{
    QProcessEnvironment variables = environmentIn(place);
    variables.insert(u"LD_PRELOAD"_s, QCoreApplication::applicationDirPath() + u"/libcut_writes.so"_s);
    // The sanitizer wants to come first; behind the library it works as well.
    variables.insert(u"ASAN_OPTIONS"_s, variables.value(u"ASAN_OPTIONS"_s) + u":verify_asan_link_order=0"_s);
    variables.insert(u"CUT_FOLDER"_s, place.work());
    variables.insert(u"CUT_COUNTER"_s, place.counter());
    if (killAt > 0)
        variables.insert(u"CUT_KILL"_s, QString::number(killAt));
    return variables;
}

QStringList leftoversOf(const kills::Workload &workload, const QString &folder)
{
    QStringList found;
    for (QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
         it.hasNext();) {
        const QString name = QDir(folder).relativeFilePath(it.next());
        if (!QDir::match(workload.files, name))
            found.append(name);
    }
    return found;
}

void report(const kills::Workload &workload, quint64 step, const QString &what, const QString &detail)
{
    std::printf("  %s, step %llu: %s\n%s\n", qUtf8Printable(workload.name), static_cast<unsigned long long>(step),
                qUtf8Printable(what), qUtf8Printable(detail));
}

QStringList commandOf(const kills::Workload &workload, const Place &place)
{
    return workload.run ? kills::ownCommand(u"run"_s, workload.name, place.work()) : workload.command(place.work());
}

// The run after the cut, and what it has left behind.
void judge(const kills::Workload &workload, const Place &place, quint64 step, Result &result)
{
    const Ended again = run(commandOf(workload, place), environmentIn(place));
    if (again.hung) {
        ++result.hangs;
        report(workload, step, u"the next run hangs"_s, again.output);
        return;
    }
    const Ended looked = run(kills::ownCommand(u"problems"_s, workload.name, place.work()), environmentIn(place));
    if (again.code != 0 || again.killed || looked.code != 0) {
        ++result.refused;
        report(workload, step, u"the next run does not put it right"_s, again.output + u'\n' + looked.output);
    }
    if (const QStringList left = leftoversOf(workload, place.work()); !left.isEmpty()) {
        ++result.leftovers;
        report(workload, step, u"left behind"_s, left.join(u", "_s));
    }
}

// The number of steps of an undisturbed run, 0 when it fails.
quint64 stepsOf(const kills::Workload &workload, const Place &place)
{
    const Ended prepared = run(kills::ownCommand(u"prepare"_s, workload.name, place.original()), environmentIn(place));
    place.renew();
    const Ended whole = run(commandOf(workload, place), cutting(place, 0));
    const Ended looked = run(kills::ownCommand(u"problems"_s, workload.name, place.work()), environmentIn(place));
    if (prepared.code == 0 && whole.code == 0 && looked.code == 0)
        return place.steps();
    report(workload, 0, u"fails undisturbed"_s, prepared.output + whole.output + looked.output);
    return 0;
}

Result killTimes(const kills::Workload &workload, int count)
{
    const Place place;
    const quint64 steps = stepsOf(workload, place);
    Result result;
    for (int i = 0; i < count && steps > 0; ++i) {
        // From the first step to the last one.
        const quint64 step = 1 + (steps - 1) * static_cast<quint64>(i) / static_cast<quint64>(std::max(count - 1, 1));
        place.renew();
        const Ended cut = run(commandOf(workload, place), cutting(place, step));
        if (cut.hung) {
            ++result.hangs;
            report(workload, step, u"hangs before the cut"_s, cut.output);
            continue;
        }
        if (cut.killed)
            ++result.kills;
        judge(workload, place, step, result);
    }
    return result;
}

int killAll(int count, const QStringList &names)
{
    const auto isWanted = [&names](const QString &name) {
        return names.isEmpty() || std::any_of(names.begin(), names.end(), [&name](const QString &wanted) {
                   return name == wanted || name.startsWith(wanted + u'-');
               });
    };
    bool good = true;
    int run = 0;
    for (const kills::Workload &workload : kills::workloads()) {
        if (!isWanted(workload.name))
            continue;
        QElapsedTimer time;
        time.start();
        const Result result = killTimes(workload, count);
        good = good && result.isGood();
        ++run;
        std::printf("%-12s %4d kills, %d hangs, %d not put right, %d leftovers (%lld s)\n",
                    qUtf8Printable(workload.name), result.kills, result.hangs, result.refused, result.leftovers,
                    time.elapsed() / 1000);
        std::fflush(stdout);
    }
    return good && run > 0 ? 0 : 1;
}

// The parts that this program runs in processes of their own.
int runPart(const QString &part, const QString &name, const QString &folder)
{
    for (const kills::Workload &workload : kills::workloads()) {
        if (workload.name != name)
            continue;
        if (part == u"--prepare" || part == u"--run") {
            part == u"--run" ? workload.run(folder) : workload.prepare(folder);
            return 0;
        }
        const QStringList problems = workload.problems(folder);
        std::printf("%s\n", qUtf8Printable(problems.join(u'\n')));
        return problems.isEmpty() ? 0 : 1;
    }
    return 2;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    try {
        if (arguments.value(1).startsWith(u"--"))
            return runPart(arguments[1], arguments.value(2), arguments.value(3));
        const int count = arguments.value(1).toInt();
        if (count > 0)
            return killAll(count, arguments.mid(2));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    std::fprintf(stderr, "usage: kills COUNT [WORKLOAD...]\n");
    return 2;
}
