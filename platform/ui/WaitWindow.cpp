#include "platform/ui/WaitWindow.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QLabel>
#include <QScreen>
#include <QThread>
#include <QVBoxLayout>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

// A window system shows a window some events after it was asked to; the program's main loop does not run yet.
void waitUntilPainted(const QWidget &window)
{
    const QDeadlineTimer deadline(500); // milliseconds; a window that nobody looks at is never painted
    const auto handleEvents = [] { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); };
    while (!window.windowHandle()->isExposed() && !deadline.hasExpired()) {
        QThread::msleep(1);
        handleEvents();
    }
    handleEvents();
}

} // namespace

WaitWindow::WaitWindow(const QString &text)
    : QWidget(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
{
    setObjectName(u"frmAttesa"_s);
    setWindowTitle(u"Corvane"_s);
    setAttribute(Qt::WA_QuitOnClose, false);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 20, 32, 20);
    layout->addWidget(new QLabel(text, this));
    setMinimumWidth(320);
    adjustSize();
    QRect place(QPoint(), size());
    place.moveCenter(screen()->availableGeometry().center());
    move(place.topLeft());
    QApplication::setOverrideCursor(Qt::WaitCursor);
    show();
    waitUntilPainted(*this);
}

WaitWindow::~WaitWindow()
{
    QApplication::restoreOverrideCursor();
}

} // namespace ui
