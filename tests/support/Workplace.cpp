#include "tests/support/Workplace.h"

#include "host/PackageLoader.h"
#include "host/ui/MainWindow.h"
#include "magazzino/uMMGModMagazzino.h"
#include "tests/support/Kit.h"

namespace test {

QDateTime workplaceTime()
{
    return {QDate(2026, 3, 16), QTime(10, 30)};
}

ScriptedDialogs::Use choosingArticle(const QString &code)
{
    return searching(code, code);
}

ScriptedDialogs::Use loggingIn(const QString &password, const std::function<void(host::MainWindow &)> &work)
{
    return [password, work](QDialog &dialog) {
        type(control<QLineEdit>(&dialog, u"txtPassword"_s), password);
        auto *timer = new QTimer(qApp);
        QObject::connect(timer, &QTimer::timeout, timer, [timer, work] {
            host::MainWindow *window = host::MainWindow::instance();
            if (!window || !window->isVisible())
                return;
            timer->stop();
            timer->deleteLater();
            work(*window);
        });
        timer->start(1);
        press(&dialog, u"cmdOk"_s);
    };
}

Workplace::Workplace(Start start, const QString &settingsFile)
    : copy_(std::make_unique<TestDatabase>(Content::DemoData))
{
    open(copy_->address(), settingsFile);
    if (start == Start::WithModule)
        startModule();
}

Workplace::Workplace(const data::DatabaseAddress &address, const QString &settingsFile)
{
    open(address, settingsFile);
    startModule();
}

void Workplace::open(const data::DatabaseAddress &address, const QString &settingsFile)
{
    core::setClock(workplaceTime);
    session_ = std::make_unique<host::Session>(address, host::administrator, settingsFile);
    window().show();
    QApplication::setActiveWindow(&window());
}

Workplace::~Workplace()
{
    session_.reset();
    core::setClock({});
}

void Workplace::startModule()
{
    host::startPackages(qApp);
    settle();
    messages.watch(*module().ModADOConn);
}

TMMGModMagazzino &Workplace::module() const
{
    return Modulo();
}

} // namespace test
