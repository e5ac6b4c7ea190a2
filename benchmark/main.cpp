// Measures the program on the data of a busy firm: magazzino_bench [S|L|XL|net] [GROUP...]
//                                                  magazzino_bench day [DOCUMENTS]
//                                                  magazzino_bench window DATABASE (what "start" starts)
#include "benchmark/Bench.h"

#include "host/Application.h"
#include "platform/core/Error.h"

#include <QApplication>
#include <QDir>
#include <QFile>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

QString processor()
{
    QFile file(u"/proc/cpuinfo"_s);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("model name"))
            return QString::fromUtf8(line.mid(line.indexOf(':') + 2));
    }
    return {};
}

bool write(const QString &path, const QString &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0;
}

bench::DataSize sizeOf(const QString &kind)
{
    return kind == u"XL" ? bench::huge : kind == u"L" ? bench::large : bench::small;
}

QString run(const QString &kind, const QStringList &wanted)
{
    if (kind == u"day") {
        constexpr int wholeDay = 10'000;
        return bench::Bench(sizeOf(kind), {}).runDay(wanted.isEmpty() ? wholeDay : wanted.constFirst().toInt());
    }
    bench::Bench bench(sizeOf(kind), wanted);
    return kind == u"net" ? bench.runOverNetwork() : bench.run();
}

int measure(const QStringList &arguments)
{
    const QString kind = arguments.value(1, u"L"_s);
    if (kind == bench::windowOnly)
        return bench::showMainWindow(arguments.value(2));
    const QString text = u"%1, %2, %3\n"_s.arg(QDateTime::currentDateTime().toString(Qt::ISODate), processor(),
                                               arguments.mid(1).join(u' ')) +
                         run(kind, arguments.mid(2));
    std::printf("%s", qUtf8Printable(text));
    const QString path = QDir::current().absoluteFilePath(u"bench-results-%1.txt"_s.arg(kind));
    if (!write(path, text)) {
        std::fprintf(stderr, "Cannot write %s\n", qUtf8Printable(path));
        return 1;
    }
    std::printf("%s\n", qUtf8Printable(path));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    host::prepareProgram(application);
    try {
        return measure(QCoreApplication::arguments());
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(core::errorText(error)));
        return 1;
    }
}
