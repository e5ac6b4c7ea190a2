// Loaded before everything else into a program under test: ends it, or its disk, in the middle of its writing. What it
// does comes in environment variables, so that child processes obey it as well:
//   CUT_FOLDER   only files below this folder count
//   CUT_COUNTER  a file of 16 bytes, shared by all processes: steps and bytes written so far
//   CUT_KILL     the number of the step before which the process group is killed; a step is a call that changes a file
//   CUT_FULL     the number of bytes after which the disk is full (ENOSPC); of the write that goes beyond it takes what
//                still fits
// It is built without the project's libraries and needs no rights.
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

struct Counters
{
    std::atomic<uint64_t> steps;
    std::atomic<uint64_t> bytes;
};

struct Cut
{
    const char *folder = getenv("CUT_FOLDER");
    uint64_t kill = number("CUT_KILL");
    uint64_t full = number("CUT_FULL");
    Counters *counters = nullptr;

    Cut()
    {
        const char *file = getenv("CUT_COUNTER");
        const int handle = file ? ::open(file, O_RDWR | O_CLOEXEC) : -1;
        void *shared =
            handle < 0 ? MAP_FAILED : mmap(nullptr, sizeof(Counters), PROT_READ | PROT_WRITE, MAP_SHARED, handle, 0);
        if (shared != MAP_FAILED)
            counters = static_cast<Counters *>(shared);
        if (handle >= 0)
            ::close(handle);
    }

    static uint64_t number(const char *variable)
    {
        const char *text = getenv(variable);
        return text ? strtoull(text, nullptr, 10) : 0;
    }
};

const Cut &cut()
{
    static const Cut value;
    return value;
}

bool isBelowFolder(const char *path)
{
    return cut().folder && strncmp(path, cut().folder, strlen(cut().folder)) == 0;
}

bool isBelowFolder(int handle)
{
    char link[64];
    char path[4096];
    snprintf(link, sizeof link, "/proc/self/fd/%d", handle);
    const ssize_t length = readlink(link, path, sizeof path - 1);
    path[length < 0 ? 0 : length] = '\0';
    return isBelowFolder(path);
}

// Answers whether the step may be done: `bytes` are about to be written, 0 for other changes. They become fewer where
// only a part fits.
bool step(bool counts, size_t &bytes)
{
    Counters *counters = cut().counters;
    if (!counters || !counts)
        return true;
    const uint64_t number = ++counters->steps;
    if (cut().kill > 0 && number >= cut().kill)
        ::kill(0, SIGKILL);
    // A full disk stays full for small writes, too.
    const uint64_t before = counters->bytes.fetch_add(bytes);
    if (cut().full == 0 || bytes == 0 || before + bytes <= cut().full)
        return true;
    bytes = before < cut().full ? cut().full - before : 0;
    errno = ENOSPC;
    return bytes > 0;
}

bool step(bool counts)
{
    size_t nothing = 0;
    return step(counts, nothing);
}

size_t sizeOf(const iovec *parts, int count)
{
    size_t size = 0;
    for (int i = 0; i < count; ++i)
        size += parts[i].iov_len;
    return size;
}

template <typename Function>
Function *original(const char *name, Function *)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

} // namespace

// The real function of the name, looked up once.
#define ORIGINAL(name) static auto *const real = original(#name, &::name)

extern "C" {

ssize_t write(int handle, const void *data, size_t size)
{
    ORIGINAL(write);
    return step(isBelowFolder(handle), size) ? real(handle, data, size) : -1;
}

ssize_t pwrite(int handle, const void *data, size_t size, off_t offset)
{
    ORIGINAL(pwrite);
    return step(isBelowFolder(handle), size) ? real(handle, data, size, offset) : -1;
}

ssize_t pwrite64(int handle, const void *data, size_t size, off64_t offset)
{
    ORIGINAL(pwrite64);
    return step(isBelowFolder(handle), size) ? real(handle, data, size, offset) : -1;
}

ssize_t writev(int handle, const iovec *parts, int count)
{
    ORIGINAL(writev);
    const size_t wanted = sizeOf(parts, count);
    size_t size = wanted;
    if (!step(isBelowFolder(handle), size))
        return -1;
    // Where only a part fits, a part of the first part is what a disk may take, too.
    iovec first = count > 0 ? *parts : iovec{};
    first.iov_len = size < first.iov_len ? size : first.iov_len;
    return size == wanted ? real(handle, parts, count) : real(handle, &first, 1);
}

int ftruncate64(int handle, off64_t size)
{
    ORIGINAL(ftruncate64);
    return step(isBelowFolder(handle)) ? real(handle, size) : -1;
}

int fsync(int handle)
{
    ORIGINAL(fsync);
    return step(isBelowFolder(handle)) ? real(handle) : -1;
}

int rename(const char *from, const char *to)
{
    ORIGINAL(rename);
    return step(isBelowFolder(to)) ? real(from, to) : -1;
}

int link(const char *from, const char *to)
{
    ORIGINAL(link);
    return step(isBelowFolder(to)) ? real(from, to) : -1;
}

int unlink(const char *path)
{
    ORIGINAL(unlink);
    return step(isBelowFolder(path)) ? real(path) : -1;
}

} // extern "C"
