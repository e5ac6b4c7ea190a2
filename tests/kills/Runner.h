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

/// Runs a program, with what it starts in a session of their own, to its end. One that neither works nor waits for the
/// disk any more hangs and is killed, however busy the machine is; so is one that does not end within ten minutes.
Ended run(const QStringList &command, const QProcessEnvironment &variables);

} // namespace kills
