#include "platform/data/firebird/ServerWatch.h"

#include "platform/core/Log.h"
#include "platform/data/DatabaseFile.h"
#include "platform/data/WaitLimits.h"
#include "platform/data/firebird/Status.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

using namespace Qt::StringLiterals;

namespace data {

WaitLimits &waitLimits()
{
    static WaitLimits limits;
    return limits;
}

namespace firebird {

namespace {

using Clock = std::chrono::steady_clock;

/// The thread that looks after all calls.
class ServerWatch
{
public:
    // Never destroyed: its thread lives as long as the program.
    static ServerWatch &instance()
    {
        static auto *const watch = new ServerWatch;
        return *watch;
    }

    quint64 begin(const DatabaseAddress &address, isc_db_handle *handle)
    {
        const std::lock_guard lock(mutex_);
        calls_[++last_] = {.address = &address, .handle = handle, .due = nextQuestion()};
        // Later calls are due later than the one that it waits for.
        if (isIdle_)
            changed_.notify_one();
        return last_;
    }

    void end(quint64 number)
    {
        const std::lock_guard lock(mutex_);
        calls_.erase(number);
    }

private:
    struct Call
    {
        const DatabaseAddress *address = nullptr;
        isc_db_handle *handle = nullptr;
        Clock::time_point due;
    };

    ServerWatch()
    {
        std::thread([this] { run(); }).detach();
    }

    static Clock::time_point nextQuestion() { return Clock::now() + std::chrono::seconds(waitLimits().silence); }

    [[noreturn]] void run()
    {
        std::unique_lock lock(mutex_);
        for (;;) {
            isIdle_ = calls_.empty();
            changed_.wait(lock, [this] { return !calls_.empty(); });
            isIdle_ = false;
            // Numbers rise with time, but a call whose server has answered is due later than those behind it.
            const auto first = std::min_element(calls_.begin(), calls_.end(), [](const auto &left, const auto &right) {
                return left.second.due < right.second.due;
            });
            const Clock::time_point due = first->second.due;
            if (due <= Clock::now())
                question(lock, first->first);
            else
                changed_.wait_until(lock, due);
        }
    }

    void question(std::unique_lock<std::mutex> &lock, quint64 number)
    {
        const DatabaseAddress address = *calls_.at(number).address;
        lock.unlock();
        const bool answers = checkDatabase(address).failure != OpenFailure::Unreachable;
        lock.lock();
        const auto call = calls_.find(number);
        if (call == calls_.end())
            return;
        call->second.due = nextQuestion();
        if (answers)
            return;
        core::logLine(u"collegamento"_s, u"the server does not answer; the connection is given up"_s);
        Status ignored;
        fb_cancel_operation(ignored, call->second.handle, fb_cancel_abort);
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::map<quint64, Call> calls_;
    quint64 last_ = 0;
    bool isIdle_ = false;
};

} // namespace

WatchedCall::WatchedCall(const DatabaseAddress &address, isc_db_handle *handle)
    : number_(address.isEmbedded() ? 0 : ServerWatch::instance().begin(address, handle))
{
}

WatchedCall::~WatchedCall()
{
    if (number_ > 0)
        ServerWatch::instance().end(number_);
}

} // namespace firebird
} // namespace data
