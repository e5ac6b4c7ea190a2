#include "tests/support/Program.h"

using namespace Qt::StringLiterals;

namespace test {

Program::Program(const QString &home, const QStringList &arguments, const data::DatabaseAddress &login,
                 const QString &folder)
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (const QString &display : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s})
        variables.remove(display);
    variables.insert(u"XDG_DATA_HOME"_s, home);
    variables.insert(u"ISC_USER"_s, login.user);
    variables.insert(u"ISC_PASSWORD"_s, login.password);
    // One that lies elsewhere has its libraries here.
    variables.insert(u"LD_LIBRARY_PATH"_s, QCoreApplication::applicationDirPath());
    process_.setProcessEnvironment(variables);
    process_.start(folder + u"/corvane"_s, arguments);
}

int Program::exitCode()
{
    constexpr int patience = 60'000; // milliseconds
    if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(patience)) {
        process_.kill();
        process_.waitForFinished();
    }
    return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

QByteArray Program::told()
{
    return process_.readAllStandardError();
}

} // namespace test
