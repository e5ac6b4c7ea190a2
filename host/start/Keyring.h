#pragma once
#include <QString>

#include <memory>
#include <optional>

namespace host {

/// Where passwords of servers are kept, each under a name: the desktop's keyring.
class Keyring
{
public:
    virtual ~Keyring() = default;
    /// The secret under `name`; nothing when there is none, and where no keyring answers.
    virtual std::optional<QString> read(const QString &name) = 0;
    /// Keeps a secret in the place of the one before. Whether it worked is told by read().
    virtual void write(const QString &name, const QString &secret) = 0;
    /// Forgets what is kept under `name`. False when no keyring says that nothing is there any more.
    virtual bool remove(const QString &name) = 0;
};

/// The desktop's keyring. One that does not answer within a few seconds, locked perhaps, is asked no more by this
/// program; a session without a desktop has none. Either answers nothing at once.
Keyring &keyring();
/// Replaces the keyring and returns what stood for it before; null restores the desktop's.
std::unique_ptr<Keyring> setKeyring(std::unique_ptr<Keyring> replacement);

/// Keeps a secret and makes sure of it: true when the keyring, asked again, gives the same.
bool keepInKeyring(const QString &name, const QString &secret);

} // namespace host
