#pragma once
#include "platform/data/ConnectionString.h"

#include <QCoreApplication>
#include <QProcess>
#include <QStringList>

namespace test {

/// The product itself in a process of its own, without a display and with its files in `home`.
class Program
{
public:
    /// Starts it. `login` is the database whose password it gets, if any; `folder` is where it lies.
    Program(const QString &home, const QStringList &arguments, const data::DatabaseAddress &login = {},
            const QString &folder = QCoreApplication::applicationDirPath());

    /// Waits for its end, a minute at most, and returns its exit code; -1 when it did not end by itself.
    int exitCode();
    /// What it told, once it has ended.
    QByteArray told();

private:
    QProcess process_;
};

} // namespace test
