// From the program's start to a main window that can be used.
#include "benchmark/Bench.h"

#include "host/DatabaseSetup.h"
#include "host/start/Startup.h"
#include "host/ui/MainWindow.h"
#include "platform/core/Error.h"
#include "platform/core/Messages.h"
#include "platform/ui/Dialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QProcess>
#include <QStandardPaths>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

// Behind the event that paints it with all that is in it. What comes with the program's end is not measured.
class EndWhenPainted : public QObject
{
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && qobject_cast<host::MainWindow *>(watched)) {
            qApp->removeEventFilter(this);
            QMetaObject::invokeMethod(
                qApp,
                [] {
                    std::puts("painted");
                    std::fflush(stdout);
                    std::_Exit(0);
                },
                Qt::QueuedConnection);
        }
        return false;
    }
};

// The user of the demonstration database has no password.
int acceptLogin(QDialog &dialog)
{
    dialog.show();
    settle();
    dialog.findChild<QAbstractButton *>(u"cmdOk"_s)->click();
    return dialog.result();
}

void awaitWindow(QProcess &program)
{
    constexpr int longest = 30'000; // milliseconds
    while (!program.canReadLine()) {
        if (!program.waitForReadyRead(longest))
            throw core::Error(u"No window: "_s + QString::fromUtf8(program.readAllStandardError()));
    }
}

} // namespace

int showMainWindow(const QString &database)
{
    core::setMessageHandler([](const core::Message &message) -> core::Answer { throw core::Error(message.text); });
    ui::setModalRunner(acceptLogin);
    EndWhenPainted end;
    qApp->installEventFilter(&end);
    host::runSessions({.database = database, .user = host::administrator},
                      QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    return 1;
}

void measureWindow(Bench &bench)
{
    const data::DatabaseAddress demo{.file = bench.filePath(u"demo.fdb"_s)};
    host::createHostDatabase(demo, true);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_DATA_HOME"_s, bench.filePath(u"home"_s));
    std::unique_ptr<QProcess> program;
    const auto start = [&] {
        program->start(QCoreApplication::applicationFilePath(), {windowOnly, demo.file});
        awaitWindow(*program);
    };
    const auto prepare = [&] {
        if (program)
            program->waitForFinished();
        program = std::make_unique<QProcess>();
        program->setProcessEnvironment(environment);
    };
    // The first start ever makes the module's tables and its demonstration rows.
    prepare();
    start();
    bench.add({.program = start, .prepare = prepare},
              {.workload = u"program's start to its painted window"_s, .target = 400, .milliseconds = true});
    program->waitForFinished();
}

} // namespace bench
