#include "tests/support/FullDisk.h"

#include "tests/support/Kit.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <sys/mman.h>

namespace test {

namespace {

// As cut_writes.cpp counts them.
struct Counters
{
    std::atomic<quint64> steps;
    std::atomic<quint64> bytes;
};

// The disk's size, far more than any test writes; how much of it is left is a matter of the bytes counted so far.
constexpr quint64 diskSize = quint64{1} << 50;

Counters *counters()
{
    static auto *const shared = [] {
        const int handle = ::open(qgetenv("CUT_COUNTER").constData(), O_RDWR | O_CLOEXEC);
        void *place = ::mmap(nullptr, sizeof(Counters), PROT_READ | PROT_WRITE, MAP_SHARED, handle, 0);
        if (place == MAP_FAILED)
            qFatal("CUT_COUNTER names no file");
        ::close(handle);
        return static_cast<Counters *>(place);
    }();
    return shared;
}

} // namespace

void preloadFullDisk(char **argv)
{
    if (qEnvironmentVariableIsSet("CUT_COUNTER"))
        return;
    // In memory, and there as long as this program runs.
    const int counter = ::memfd_create("counter", 0);
    const QString own = QFileInfo(u"/proc/self/exe"_s).canonicalFilePath();
    const QByteArray library = QFile::encodeName(QFileInfo(own).absolutePath() + u"/libcut_writes.so"_s);
    qputenv("LD_PRELOAD", library);
    qputenv("CUT_FOLDER", QFile::encodeName(QDir::tempPath()));
    qputenv("CUT_COUNTER", "/proc/" + QByteArray::number(::getpid()) + "/fd/" + QByteArray::number(counter));
    qputenv("CUT_FULL", QByteArray::number(diskSize));
    // The sanitizer wants to come first; behind it the library works as well.
    qputenv("ASAN_OPTIONS", qgetenv("ASAN_OPTIONS") + ":verify_asan_link_order=0");
    if (::ftruncate(counter, sizeof(Counters)) == 0 && ::access(library.constData(), R_OK) == 0)
        ::execv(QFile::encodeName(own).constData(), argv);
    std::perror(library.constData());
    std::exit(1);
}

FullDisk::FullDisk(qint64 bytes)
{
    counters()->bytes = diskSize - static_cast<quint64>(bytes);
}

FullDisk::~FullDisk()
{
    counters()->bytes = 0;
}

} // namespace test
