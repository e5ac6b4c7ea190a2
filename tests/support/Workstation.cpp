#include "tests/support/Workstation.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace test {

static const QString silence = u"silence"_s;

Workstation::Workstation(const data::DatabaseAddress &address, const QStringList &arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"ISC_PASSWORD"_s, address.password);
    process_.setProcessEnvironment(environment);
    process_.start(QCoreApplication::applicationDirPath() + u"/workstation"_s,
                   QStringList(address.toString()) + arguments);
}

void Workstation::tell(const QString &line)
{
    process_.write(line.toUtf8() + '\n');
    process_.waitForBytesWritten();
}

QString Workstation::answer()
{
    constexpr int patience = 60'000;
    while (!process_.canReadLine()) {
        if (!process_.waitForReadyRead(patience))
            return silence;
    }
    return QString::fromUtf8(process_.readLine()).trimmed();
}

void Workstation::kill()
{
    process_.kill();
    process_.waitForFinished();
}

QString Workstation::end(int seconds)
{
    process_.closeWriteChannel();
    if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(seconds * 1000))
        return silence;
    const QString complaint = QString::fromUtf8(process_.readAllStandardError()).trimmed();
    const bool isGood = process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0;
    return isGood ? QString() : u"exit code %1: %2"_s.arg(process_.exitCode()).arg(complaint);
}

} // namespace test
