#include "tests/support/SlowLink.h"

#include "platform/core/Error.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace test {

namespace {

constexpr int patience = 50; // milliseconds until the end is noticed

sockaddr_in localAddress(int port)
{
    sockaddr_in local{};
    local.sin_family = AF_INET;
    local.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    local.sin_port = htons(static_cast<uint16_t>(port));
    return local;
}

// Nothing may wait for more bytes but the delay that was asked for.
void sendAtOnce(int handle)
{
    const int on = 1;
    setsockopt(handle, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

/// A socket as a scope.
class Socket
{
public:
    explicit Socket(int handle)
        : handle_(handle)
    {
        sendAtOnce(handle);
    }
    ~Socket() { close(handle_); }
    Q_DISABLE_COPY(Socket)

    int handle() const { return handle_; }

private:
    int handle_;
};

bool sendAll(int handle, const char *bytes, ssize_t size)
{
    for (ssize_t done = 0; done < size;) {
        const ssize_t sent = send(handle, bytes + done, static_cast<size_t>(size - done), MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        done += sent;
    }
    return true;
}

} // namespace

SlowLink::SlowLink(int serverPort)
    : serverPort_(serverPort)
    , listener_(socket(AF_INET, SOCK_STREAM, 0))
{
    sockaddr_in local = localAddress(0);
    socklen_t size = sizeof local;
    auto *address = reinterpret_cast<sockaddr *>(&local);
    if (bind(listener_, address, size) != 0 || ::listen(listener_, SOMAXCONN) != 0 ||
        getsockname(listener_, address, &size) != 0) {
        close(listener_);
        throw core::Error(u"There is no free port."_s);
    }
    port_ = ntohs(local.sin_port);
    thread_ = std::thread([this] { listen(); });
}

SlowLink::~SlowLink()
{
    isEnding_ = true;
    thread_.join();
    for (std::thread &connection : connections_)
        connection.join();
    close(listener_);
}

void SlowLink::listen()
{
    pollfd waiting{.fd = listener_, .events = POLLIN};
    while (!isEnding_) {
        if (poll(&waiting, 1, patience) <= 0)
            continue;
        const int client = accept(listener_, nullptr, nullptr);
        if (client >= 0)
            connections_.emplace_back([this, client] { carry(client); });
    }
}

void SlowLink::carry(int client)
{
    const Socket from(client);
    const Socket to(socket(AF_INET, SOCK_STREAM, 0));
    const sockaddr_in server = localAddress(serverPort_);
    if (connect(to.handle(), reinterpret_cast<const sockaddr *>(&server), sizeof server) != 0)
        return;
    bool clientSpoke = false;
    char bytes[65536];
    pollfd sides[] = {{.fd = from.handle(), .events = POLLIN}, {.fd = to.handle(), .events = POLLIN}};
    while (!isEnding_) {
        if (poll(sides, 2, patience) <= 0)
            continue;
        for (const bool isClient : {true, false}) {
            if (!sides[isClient ? 0 : 1].revents)
                continue;
            const ssize_t size = recv(isClient ? from.handle() : to.handle(), bytes, sizeof bytes, 0);
            if (size <= 0)
                return;
            if (isClient && !clientSpoke) {
                ++turns_;
                std::this_thread::sleep_for(delay_.load());
            }
            clientSpoke = isClient;
            if (!sendAll(isClient ? to.handle() : from.handle(), bytes, size))
                return;
        }
    }
}

} // namespace test
