#pragma once
#include "benchmark/Measure.h"
#include "platform/data/ConnectionString.h"

#include <QStringList>

namespace test {
class FirebirdServer;
class SlowLink;
} // namespace test

namespace bench {

/// A database server of this run's own behind a link that counts turns and delays them.
class Network
{
public:
    Network();
    ~Network();
    Network(const Network &) = delete;
    Network &operator=(const Network &) = delete;

    /// Of the database, through the link.
    data::DatabaseAddress address() const;
    /// Runs the program's way at each delay; its first run, in which statements are prepared, is told apart.
    void measure(const Pair &pair, const QString &workload);
    /// What was measured, as a text table.
    QString table() const { return lines_.join(QString()); }

private:
    std::unique_ptr<test::FirebirdServer> server_;
    std::unique_ptr<test::SlowLink> link_;
    QStringList lines_;
};

} // namespace bench
