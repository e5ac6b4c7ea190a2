#include "magazzino/ui/ScanTiming.h"

#include "platform/core/Clock.h"

namespace {

constexpr qint64 fastest = 30; // ms between two keys of a reader at most

// The keyboard's own time, because keys that waited for a busy program arrive all at once.
qint64 timeOf(const QKeyEvent &key)
{
    return key.timestamp() != 0 ? static_cast<qint64>(key.timestamp()) : core::now().toMSecsSinceEpoch();
}

} // namespace

void ScanTiming::pressed(const QKeyEvent &key, const QString &typed, const QString &before)
{
    const qint64 time = timeOf(key);
    if (scanned_.isEmpty() || time - lastKey_ > fastest) {
        scanned_.clear();
        before_ = before;
    }
    scanned_ += typed;
    lastKey_ = time;
}

bool ScanTiming::endsScan(const QKeyEvent &end, qsizetype least) const
{
    return scanned_.size() >= least && timeOf(end) - lastKey_ <= fastest;
}
