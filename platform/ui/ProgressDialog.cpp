#include "platform/ui/ProgressDialog.h"

#include "platform/core/Translation.h"
#include "platform/data/ReadApart.h"
#include "platform/ui/Controls.h"
#include "platform/ui/Dialogs.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QThread>
#include <QVBoxLayout>

#include <optional>

using namespace Qt::StringLiterals;

namespace ui {

ProgressDialog::ProgressDialog(const QString &title, core::Progress &progress, QWidget *owner)
    : QDialog(owner, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
    , progress_(progress)
    , text_(named(u"lblAvanzamento"_s, new ElidedLabel(this)))
    , bar_(new QProgressBar(this))
    , cancel_(named(u"cmdAnnulla"_s, new QPushButton(u"Annulla"_s, this)))
{
    setWindowTitle(title);
    connect(cancel_, &QPushButton::clicked, this, &ProgressDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(text_);
    layout->addWidget(bar_);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cancel_);
    layout->addLayout(buttons);
    setMinimumWidth(420);
    connect(&timer_, &QTimer::timeout, this, &ProgressDialog::refresh);
    constexpr int refreshMilliseconds = 100;
    timer_.start(refreshMilliseconds);
    refresh();
}

void ProgressDialog::refresh()
{
    text_->setText(progress_.isCancelled() ? core::tr("Annullamento in corso…") : progress_.text());
    bar_->setRange(0, progress_.total());
    bar_->setValue(std::min(progress_.done(), progress_.total()));
}

void ProgressDialog::reject()
{
    progress_.cancel();
    cancel_->setEnabled(false);
    refresh();
}

namespace {

std::chrono::milliseconds quietTime(500);

bool endsWithin(std::chrono::milliseconds time, QThread &thread)
{
    const WaitCursor wait;
    return thread.wait(QDeadlineTimer(time));
}

/// Over a caller's hourglass.
struct ArrowCursor
{
    ArrowCursor() { QGuiApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~ArrowCursor() { QGuiApplication::restoreOverrideCursor(); }
    ArrowCursor(const ArrowCursor &) = delete;
    ArrowCursor &operator=(const ArrowCursor &) = delete;
};

// Returns false when the user cancelled it.
bool run(QWidget *owner, const QString &title, const Work &work, std::chrono::milliseconds quiet)
{
    core::Progress progress;
    std::exception_ptr failure;
    bool cancelled = false;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        try {
            work(progress);
        } catch (const core::Cancelled &) {
            cancelled = true;
        } catch (...) {
            failure = std::current_exception();
        }
    }));
    ProgressDialog dialog(title, progress, owner);
    QObject::connect(thread.get(), &QThread::finished, &dialog, &QDialog::accept);
    thread->start();
    if (quiet.count() == 0 || !endsWithin(quiet, *thread)) {
        const ArrowCursor arrow;
        runModal(dialog);
    }
    // Whatever ended the dialog, nothing below may outlive what the thread refers to.
    if (!thread->isFinished())
        progress.cancel();
    thread->wait();
    if (failure)
        std::rethrow_exception(failure);
    return !cancelled;
}

} // namespace

bool runWithProgress(QWidget *owner, const QString &title, const Work &work)
{
    return run(owner, title, work, {});
}

void runInterruptibly(QWidget *owner, const QString &title, const Work &work)
{
    if (!run(owner, title, work, quietTime))
        throw core::Cancelled();
}

void runInSteps(QWidget *owner, const QString &title, const Work &work)
{
    core::Progress progress;
    ProgressDialog dialog(title, progress, owner);
    const WaitCursor wait;
    std::optional<ArrowCursor> arrow;
    QElapsedTimer time;
    time.start();
    progress.setWatcher([&] {
        if (time.elapsed() < quietTime.count())
            return;
        if (!arrow) {
            arrow.emplace();
            showModal(dialog);
        }
        QCoreApplication::processEvents();
    });
    work(progress);
}

void openInterruptibly(QWidget *owner, const QString &title, data::DataSet &query)
{
    query.close();
    data::Rows rows;
    const QString database = query.connection()->connectionString();
    const auto read = [&rows, &database, sql = query.commandText()](core::Progress &progress) {
        progress.setText(core::tr("Lettura dell'archivio…"));
        rows = data::readApart(database, sql, progress);
    };
    runInterruptibly(owner, title, read);
    query.openWith(std::move(rows));
}

std::chrono::milliseconds setQuietTime(std::chrono::milliseconds time)
{
    return std::exchange(quietTime, time);
}

} // namespace ui
