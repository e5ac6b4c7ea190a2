#pragma once
#include <QString>
#include <QtGlobal>

#include <functional>

namespace test {

/// Watches while it lives what Qt itself warns of: a signal that does not exist, a connection closed too early, a
/// painter without a device. The youngest watcher is the one that is told.
class QtWarnings
{
public:
    using Use = std::function<void(QtMsgType type, const QString &text)>;

    /// Each warning or error, but for the few that the offscreen platform always gives, goes to `use` and then where
    /// it went before.
    explicit QtWarnings(Use use);
    ~QtWarnings();
    Q_DISABLE_COPY(QtWarnings)

private:
    static void take(QtMsgType type, const QMessageLogContext &context, const QString &text);

    Use use_;
    QtWarnings *outer_;
    QtMessageHandler before_;
};

} // namespace test
