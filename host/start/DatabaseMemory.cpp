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
    const data::DatabaseAddress whole = data::DatabaseAddress::parse(entry);
    if (whole.isEmbedded() || at < 0)
        return whole;
    data::DatabaseAddress address = data::DatabaseAddress::parse(entry.mid(at + 1));
    address.user = entry.left(at);
    return address;
}

// Keys of an ini file must hold no slash.
QString passwordKey(const data::DatabaseAddress &database)
{
    return QString::fromLatin1(entryOf(database).toUtf8().toHex());
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
        address.password = passwords.value(passwordKey(address)).toString();
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
    const QSettings settings(settingsFile(), QSettings::IniFormat);
    const QStringList entries = settings.value(recentKey).toStringList();
    for (const QString &entry : entries)
        addresses.append(withPassword(entry));
    return addresses;
}

void DatabaseMemory::remember(const data::DatabaseAddress &database, bool keepPassword)
{
    QSettings settings(settingsFile(), QSettings::IniFormat);
    QStringList entries = settings.value(recentKey).toStringList();
    entries.removeAll(entryOf(database));
    entries.prepend(entryOf(database));
    settings.setValue(recentKey, QStringList(entries.mid(0, mostRecent)));
    if (database.isEmbedded() || (!keepPassword && !QFile::exists(passwordFile())))
        return;
    protect(passwordFile());
    {
        QSettings passwords(passwordFile(), QSettings::IniFormat);
        // Written in place: a replaced file would get the account's usual permissions.
        passwords.setAtomicSyncRequired(false);
        if (keepPassword)
            passwords.setValue(passwordKey(database), database.password);
        else
            passwords.remove(passwordKey(database));
    }
    protect(passwordFile());
}

void DatabaseMemory::forget(const data::DatabaseAddress &database)
{
    QSettings settings(settingsFile(), QSettings::IniFormat);
    QStringList entries = settings.value(recentKey).toStringList();
    entries.removeAll(entryOf(database));
    settings.setValue(recentKey, entries);
}

bool DatabaseMemory::keepsPassword(const data::DatabaseAddress &database) const
{
    return QFile::exists(passwordFile()) &&
           QSettings(passwordFile(), QSettings::IniFormat).contains(passwordKey(database));
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
