#pragma once
#include <QtGlobal>

#include <atomic>
#include <chrono>
#include <list>
#include <thread>

namespace test {

/// A way to a server of this machine that counts how often client and server take turns (the client speaks, then the
/// server answers), and that can make each turn last longer, as a wireless network or a tunnel does.
class SlowLink
{
public:
    /// Listens on a free local port. Throws core::Error.
    explicit SlowLink(int serverPort);
    /// Breaks what is still connected.
    ~SlowLink();
    Q_DISABLE_COPY(SlowLink)

    /// Where clients connect to.
    int port() const { return port_; }
    /// Turns of all connections so far.
    int turns() const { return turns_; }
    /// How much longer than without the link each turn takes from now on.
    void setDelay(std::chrono::milliseconds delay) { delay_ = delay; }

private:
    void listen();
    void carry(int client);

    int serverPort_;
    int port_ = 0;
    int listener_ = -1;
    std::atomic<int> turns_ = 0;
    std::atomic<std::chrono::milliseconds> delay_{std::chrono::milliseconds(0)};
    std::atomic<bool> isEnding_ = false;
    std::list<std::thread> connections_; ///< added by the listening thread only
    std::thread thread_;
};

} // namespace test
