#include "tests/support/QtWarnings.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace test {

namespace {

QtWarnings *&current()
{
    static QtWarnings *watcher = nullptr;
    return watcher;
}

// A platform without a desktop cannot do these and says so.
bool comesFromOffscreen(const QString &text)
{
    static const QStringList unsupported = {u"propagateSizeHints()"_s, u"raise()"_s, u"grabbing the keyboard"_s};
    const QString prefix = u"This plugin does not support "_s;
    return text.startsWith(prefix) && unsupported.contains(text.sliced(prefix.size()));
}

} // namespace

QtWarnings::QtWarnings(Use use)
    : use_(std::move(use))
    , outer_(std::exchange(current(), this))
    , before_(qInstallMessageHandler(take))
{
}

QtWarnings::~QtWarnings()
{
    qInstallMessageHandler(before_);
    current() = outer_;
}

void QtWarnings::take(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const QtWarnings &watcher = *current();
    if ((type == QtWarningMsg || type == QtCriticalMsg) && !comesFromOffscreen(text))
        watcher.use_(type, text);
    watcher.before_(type, context, text);
}

} // namespace test
