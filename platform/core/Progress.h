#pragma once
#include <QMutex>
#include <QString>

#include <atomic>
#include <exception>
#include <functional>

namespace core {

/// Thrown by Progress::step() when the user has asked to stop; whoever works lets it pass and so undoes what it began.
class Cancelled : public std::exception
{
public:
    const char *what() const noexcept override { return "cancelled"; }
};

/// How far a long work has come and whether it is still wanted. One thread works, another one shows and cancels.
class Progress
{
public:
    /// What is being done now, for the user.
    void setText(const QString &text)
    {
        const QMutexLocker lock(&mutex_);
        text_ = text;
    }
    /// What setText() said last; empty before it.
    QString text() const
    {
        const QMutexLocker lock(&mutex_);
        return text_;
    }

    /// Steps in all; 0 while nobody knows.
    void setTotal(int steps) { total_ = steps; }
    /// The steps of setTotal(); 0 while nobody knows.
    int total() const { return total_; }
    /// The steps of the last step().
    int done() const { return done_; }
    /// `steps` are done. Throws Cancelled once cancel() was called.
    void step(int steps)
    {
        done_ = steps;
        if (watcher_)
            watcher_();
        check();
    }
    /// Throws Cancelled once cancel() was called.
    void check() const
    {
        if (cancelled_)
            throw Cancelled();
    }

    /// Calls `watcher` at each step, in the thread that works.
    void setWatcher(std::function<void()> watcher) { watcher_ = std::move(watcher); }

    /// Asks the work to stop, at its next step.
    void cancel()
    {
        cancelled_ = true;
        const QMutexLocker lock(&mutex_);
        if (interrupt_)
            interrupt_();
    }
    /// Was it asked to stop?
    bool isCancelled() const { return cancelled_; }

private:
    friend class Interruption;
    void setInterrupt(std::function<void()> interrupt)
    {
        const QMutexLocker lock(&mutex_);
        interrupt_ = std::move(interrupt);
    }

    mutable QMutex mutex_;
    std::function<void()> interrupt_;
    std::function<void()> watcher_;
    QString text_;
    std::atomic<int> total_ = 0;
    std::atomic<int> done_ = 0;
    std::atomic<bool> cancelled_ = false;
};

/// While it lives, Progress::cancel() also calls `how`, in the thread that cancels: for a step that takes long in
/// itself.
class Interruption
{
public:
    Interruption(Progress &progress, std::function<void()> how)
        : progress_(progress)
    {
        progress_.setInterrupt(std::move(how));
    }
    ~Interruption() { progress_.setInterrupt({}); }
    Interruption(const Interruption &) = delete;
    Interruption &operator=(const Interruption &) = delete;

private:
    Progress &progress_;
};

} // namespace core
