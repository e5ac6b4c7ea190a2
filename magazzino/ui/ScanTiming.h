#pragma once
#include <QKeyEvent>
#include <QString>

/// Tells a barcode reader from fingers by the time between its keys.
class ScanTiming
{
public:
    /// A key that types `typed` was pressed in a field which held `before`.
    void pressed(const QKeyEvent &key, const QString &typed, const QString &before);
    /// Does `end`, pressed now, end a scan: at least `least` characters, each key within 30 ms of the last one?
    bool endsScan(const QKeyEvent &end, qsizetype least) const;
    /// What was typed that fast.
    const QString &scanned() const { return scanned_; }
    /// What the field held before it.
    const QString &before() const { return before_; }
    /// The next key begins anew.
    void forget() { scanned_.clear(); }

private:
    qint64 lastKey_ = 0; // ms
    QString scanned_;
    QString before_;
};
