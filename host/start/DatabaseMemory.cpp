#include "host/start/DatabaseMemory.h"

#include "host/start/Keyring.h"
#include "platform/core/Lists.h"
#include "platform/core/Settings.h"

#include <QDir>
#include <QFile>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int mostRecent = 8;
const QString recentKey = u"database/recenti"_s;
const QString userKey = u"accesso/utente"_s;
// Of the file of passwords: what the keyring has yet to forget.
const QString owedGroup = u"daTogliere"_s;

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

// `database` goes to the front, or away.
QStringList changedEntries(const QSettings &settings, const data::DatabaseAddress &database, bool forget)
{
    QStringList all = settings.value(recentKey).toStringList();
    all.removeAll(entryOf(database));
    if (!forget)
        all.prepend(entryOf(database));
    return all.mid(0, mostRecent);
}

// The keyring's passwords have a key without a value in the file, so that nobody asks it for others. It may hold one
// that lies in the file as well: it was locked then, or kept it after nobody waited any more.
void dropPassword(QSettings &passwords, const QString &key)
{
    if (!passwords.contains(key))
        return;
    passwords.remove(key);
    passwords.setValue(owedGroup + u'/' + key, QString());
}

// A keyring that does not answer is asked again the next time.
void removeOwed(QSettings &passwords)
{
    passwords.beginGroup(owedGroup);
    for (const QString &key : passwords.childKeys()) {
        if (keyring().remove(QString::fromUtf8(QByteArray::fromHex(key.toLatin1()))))
            passwords.remove(key);
    }
    passwords.endGroup();
}

// Those of databases that are no longer remembered must not lie about.
void dropOldPasswords(QSettings &passwords, const QStringList &entries)
{
    for (const QString &key : passwords.childKeys()) {
        if (std::none_of(entries.begin(), entries.end(),
                         [&key](const QString &entry) { return passwordKey(entry) == key; }))
            dropPassword(passwords, key);
    }
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

data::DatabaseAddress DatabaseMemory::withPassword(const data::DatabaseAddress &database) const
{
    data::DatabaseAddress address = database;
    if (!keepsPassword(database))
        return address;
    const QString entry = entryOf(database);
    const QSettings passwords(passwordFile(), QSettings::IniFormat);
    address.password = passwords.value(passwordKey(entry)).toString();
    if (address.password.isEmpty())
        address.password = keyring().read(entry).value_or(QString());
    return address;
}

std::optional<data::DatabaseAddress> DatabaseMemory::last() const
{
    const QList<data::DatabaseAddress> all = recent();
    if (all.isEmpty())
        return {};
    return withPassword(all.first());
}

QList<data::DatabaseAddress> DatabaseMemory::recent() const
{
    return core::mapped(entries(), addressOf);
}

void DatabaseMemory::remember(const data::DatabaseAddress &database, bool keepPassword)
{
    QStringList all;
    core::changeSettings(settingsFile(), [&](QSettings &settings) {
        all = changedEntries(settings, database, false);
        settings.setValue(recentKey, all);
    });
    const bool keep = keepPassword && !database.isEmbedded();
    if (!keep && !QFile::exists(passwordFile()))
        return;
    const QString entry = entryOf(database);
    // The file lets go of it only when the keyring has answered with it.
    const bool inKeyring = keep && keepInKeyring(entry, database.password);
    core::changeSettings(passwordFile(), [&](QSettings &passwords) {
        const QString key = passwordKey(entry);
        if (keep) {
            passwords.setValue(key, inKeyring ? QString() : database.password);
            passwords.remove(owedGroup + u'/' + key);
        } else {
            dropPassword(passwords, key);
        }
        dropOldPasswords(passwords, all);
        removeOwed(passwords);
    });
}

void DatabaseMemory::forget(const data::DatabaseAddress &database)
{
    core::changeSettings(settingsFile(), [&](QSettings &settings) {
        settings.setValue(recentKey, changedEntries(settings, database, true));
    });
    if (QFile::exists(passwordFile()))
        core::changeSettings(passwordFile(), [&](QSettings &passwords) {
            dropPassword(passwords, passwordKey(entryOf(database)));
            removeOwed(passwords);
        });
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

void DatabaseMemory::rememberUser(const QString &userName) const
{
    if (userName == lastUser())
        return;
    core::changeSettings(settingsFile(), [&userName](QSettings &settings) { settings.setValue(userKey, userName); });
}

} // namespace host
