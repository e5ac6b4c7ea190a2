#include "host/start/Keyring.h"

#include "host/DesktopScheme.h"
#include "platform/core/Log.h"

#include <QEventLoop>
#include <QTimer>

#include <qt6keychain/keychain.h>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// Of this program; the names of its secrets tell which server and which user.
const QString service = u"Corvane"_s;
constexpr int patience = 4'000; // milliseconds; nobody waits longer for a login

/// Through the library that knows the desktops.
class DesktopKeyring : public Keyring
{
public:
    std::optional<QString> read(const QString &name) override
    {
        auto *job = new QKeychain::ReadPasswordJob(service);
        std::optional<QString> secret;
        QObject::connect(job, &QKeychain::Job::finished, job, [job, &secret] {
            if (job->error() == QKeychain::NoError)
                secret = job->textData();
        });
        run(job, name);
        return secret;
    }

    void write(const QString &name, const QString &secret) override
    {
        auto *job = new QKeychain::WritePasswordJob(service);
        job->setTextData(secret);
        run(job, name);
    }

    bool remove(const QString &name) override
    {
        auto *job = new QKeychain::DeletePasswordJob(service);
        bool gone = false;
        QObject::connect(job, &QKeychain::Job::finished, job, [job, &gone] {
            gone = job->error() == QKeychain::NoError || job->error() == QKeychain::EntryNotFound;
        });
        run(job, name);
        return gone;
    }

private:
    // The answer comes through the event loop. What the user types meanwhile waits.
    void run(QKeychain::Job *job, const QString &name)
    {
        if (silent_) {
            delete job;
            return;
        }
        job->setKey(name);
        job->setInsecureFallback(false);
        QEventLoop loop;
        bool answered = false;
        QObject::connect(job, &QKeychain::Job::finished, &loop, [&] {
            answered = true;
            loop.quit();
        });
        QTimer::singleShot(patience, &loop, &QEventLoop::quit);
        job->start();
        loop.exec(QEventLoop::ExcludeUserInputEvents);
        if (answered)
            return;
        // It ends by itself, if ever; what it was to answer is gone by then.
        job->disconnect();
        silent_ = true;
        core::logLine(u"portachiavi"_s, u"Il portachiavi del desktop non risponde."_s);
    }

    bool silent_ = !hasMessageBus();
};

std::unique_ptr<Keyring> &current()
{
    static std::unique_ptr<Keyring> keyring = std::make_unique<DesktopKeyring>();
    return keyring;
}

} // namespace

Keyring &keyring()
{
    return *current();
}

std::unique_ptr<Keyring> setKeyring(std::unique_ptr<Keyring> replacement)
{
    return std::exchange(current(), replacement ? std::move(replacement) : std::make_unique<DesktopKeyring>());
}

bool keepInKeyring(const QString &name, const QString &secret)
{
    if (keyring().read(name) == secret)
        return true;
    keyring().write(name, secret);
    return keyring().read(name) == secret;
}

} // namespace host
