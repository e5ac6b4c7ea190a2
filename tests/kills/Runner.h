#pragma once
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace kills {

/// How a process came to its end.
struct Ended
{
    bool hung = false;
    bool killed = false;
    int code = -1;
    QString output;
};

/// Runs a program, with what it starts in a session of their own, to its end. One that does not end within ten minutes
/// hangs and is killed.
Ended run(const QStringList &command, const QProcessEnvironment &variables);

} // namespace kills
