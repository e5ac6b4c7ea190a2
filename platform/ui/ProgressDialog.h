#pragma once
#include "platform/core/Progress.h"
#include "platform/data/DataSet.h"

#include <QDialog>
#include <QTimer>

#include <QProgressBar>
#include <QPushButton>
#include <chrono>
#include <functional>

class QLabel;

namespace ui {

class ElidedLabel;

using Work = std::function<void(core::Progress &)>;

/// Runs `work` in a thread of its own behind a modal dialog with a bar and "Annulla", so that the windows stay alive.
/// Returns false when the user cancelled it; throws what `work` throws. A database connection that `work` needs has to
/// be made inside it, since a connection belongs to its thread; this thread writes nothing meanwhile.
bool runWithProgress(QWidget *owner, const QString &title, const Work &work);

/// The same for work that is mostly over at once: dialog and "Annulla" come when it takes longer than half a second,
/// with the hourglass until then. Throws core::Cancelled when the user cancelled it. No transaction may be open.
void runInterruptibly(QWidget *owner, const QString &title, const Work &work);

/// The same for work that only the windows' thread may do: their events are handled at each Progress::step() of `work`
/// once the dialog is there. The user reaches nothing else then, but timers run: what they may change under `work` is
/// its to notice.
void runInSteps(QWidget *owner, const QString &title, const Work &work);

/// Fetches the rows of a query without parameters as its open() does, interruptibly. Throws core::Cancelled, which
/// leaves it closed, and data::DatabaseError.
void openInterruptibly(QWidget *owner, const QString &title, data::DataSet &query);

/// How long the dialog of runInterruptibly() is not shown; returns what it was before. A seam for tests: with 0 it
/// comes at once.
std::chrono::milliseconds setQuietTime(std::chrono::milliseconds time);

/// The dialog of runWithProgress(). Closing it asks the work to stop; it goes away when the work has ended.
class ProgressDialog : public QDialog
{
    Q_OBJECT

public:
    /// Shows `progress`, which must live longer, as it goes on.
    ProgressDialog(const QString &title, core::Progress &progress, QWidget *owner);

    void reject() override;

private:
    void refresh();

    core::Progress &progress_;
    ElidedLabel *text_;
    QProgressBar *bar_;
    QPushButton *cancel_;
    QTimer timer_;
};

} // namespace ui
