#include "host/start/DatabaseMemory.h"

#include "platform/core/Error.h"

#include <QDir>
#include <QFile>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int mostRecent = 8;
const QString recentKey = u"database/recenti"_s;
const QString userKey = u"accesso/utente"_s;
constexpr auto ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

// A server's user stands before the address: "SYSDBA@server/3050:/srv/firm.fdb".
QString entryOf(const data::DatabaseAddress &database)
{
    return database.isEmbedded() ? database.toString() : database.user + u'@' + database.toString();
}

data::DatabaseAddress addressOf(const QString &entry)
{
    const qsizetype at = entry.indexOf(u'@');
    data::DatabaseAddress whole = data::DatabaseAddress::parse(entry);
    if (whole.isEmbedded() || at < 0)
        return whole;
    data::DatabaseAddress address = data::DatabaseAddress::parse(entry.mid(at + 1));
    address.user = entry.left(at);
    return address;
}

// Keys of an ini file must hold no slash.
QString passwordKey(const QString &entry)
{
    return QString::fromLatin1(entry.toUtf8().toHex());
}

// Made before anything is written into it, so that at no moment another account can read it.
void protect(const QString &path)
{
    QFile file(path);
    const bool exists = file.exists() || file.open(QIODevice::WriteOnly | QIODevice::NewOnly, ownerOnly);
    if (!exists || !QFile::setPermissions(path, ownerOnly))
        throw core::Error(u"Impossibile proteggere il file delle password \"%1\"."_s.arg(path));
}

} // namespace

DatabaseMemory::DatabaseMemory(const QString &folder)
    : folder_(folder)
{
    QDir().mkpath(folder);
}

QString DatabaseMemory::settingsFile() const
{
    return folder_ + u"/corvane.ini"_s;
}

QString DatabaseMemory::passwordFile() const
{
    return folder_ + u"/accessi.ini"_s;
}

data::DatabaseAddress DatabaseMemory::withPassword(const QString &entry) const
{
    data::DatabaseAddress address = addressOf(entry);
    if (!address.isEmbedded() && QFile::exists(passwordFile())) {
        const QSettings passwords(passwordFile(), QSettings::IniFormat);
        address.password = passwords.value(passwordKey(entry)).toString();
    }
    return address;
}

std::optional<data::DatabaseAddress> DatabaseMemory::last() const
{
    const QList<data::DatabaseAddress> all = recent();
    if (all.isEmpty())
        return {};
    return all.first();
}

QList<data::DatabaseAddress> DatabaseMemory::recent() const
{
    QList<data::DatabaseAddress> addresses;
    const QStringList all = entries();
    for (const QString &entry : all)
        addresses.append(withPassword(entry));
    return addresses;
}

void DatabaseMemory::remember(const data::DatabaseAddress &database, bool keepPassword)
{
    QStringList all = entries();
    all.removeAll(entryOf(database));
    all.prepend(entryOf(database));
    all = all.mid(0, mostRecent);
    QSettings(settingsFile(), QSettings::IniFormat).setValue(recentKey, all);
    const bool keep = keepPassword && !database.isEmbedded();
    if (!keep && !QFile::exists(passwordFile()))
        return;
    changePasswords([&](QSettings &passwords) {
        if (keep)
            passwords.setValue(passwordKey(entryOf(database)), database.password);
        else
            passwords.remove(passwordKey(entryOf(database)));
        // Those of databases that are no longer remembered must not lie about.
        const QStringList kept = passwords.allKeys();
        for (const QString &key : kept) {
            if (std::none_of(all.begin(), all.end(),
                             [&key](const QString &entry) { return passwordKey(entry) == key; }))
                passwords.remove(key);
        }
    });
}

void DatabaseMemory::forget(const data::DatabaseAddress &database)
{
    QStringList all = entries();
    all.removeAll(entryOf(database));
    QSettings(settingsFile(), QSettings::IniFormat).setValue(recentKey, all);
    if (QFile::exists(passwordFile()))
        changePasswords([&](QSettings &passwords) { passwords.remove(passwordKey(entryOf(database))); });
}

void DatabaseMemory::changePasswords(const std::function<void(QSettings &)> &change) const
{
    protect(passwordFile());
    {
        QSettings passwords(passwordFile(), QSettings::IniFormat);
        // Written in place: a replaced file would get the account's usual permissions.
        passwords.setAtomicSyncRequired(false);
        change(passwords);
    }
    protect(passwordFile());
}

QStringList DatabaseMemory::entries() const
{
    return QSettings(settingsFile(), QSettings::IniFormat).value(recentKey).toStringList();
}

bool DatabaseMemory::keepsPassword(const data::DatabaseAddress &database) const
{
    return QFile::exists(passwordFile()) &&
           QSettings(passwordFile(), QSettings::IniFormat).contains(passwordKey(entryOf(database)));
}

QString DatabaseMemory::lastUser() const
{
    return QSettings(settingsFile(), QSettings::IniFormat).value(userKey).toString();
}

void DatabaseMemory::rememberUser(const QString &userName)
{
    QSettings(settingsFile(), QSettings::IniFormat).setValue(userKey, userName);
}

} // namespace host
