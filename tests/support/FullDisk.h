#pragma once
#include <QtGlobal>

namespace test {

/// Starts this program once more with the library that can fill its disk, which is the temporary folder; returns in the
/// program that has it. The first thing in main().
void preloadFullDisk(char **argv);

/// While it lives, `bytes` more can be written to the disk, by this process and its children together; then it is full.
class FullDisk
{
public:
    explicit FullDisk(qint64 bytes);
    ~FullDisk();
    Q_DISABLE_COPY(FullDisk)
};

} // namespace test
