#include "platform/ui/Drafts.h"

#include "platform/core/Clock.h"
#include "platform/core/Error.h"
#include "platform/core/Lists.h"
#include "platform/core/Log.h"
#include "platform/core/SaveFile.h"
#include "platform/core/Translation.h"
#include "platform/core/WorkFolder.h"
#include "platform/ui/CallAfter.h"
#include "platform/ui/EntryForm.h"

#include <QDir>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

// So much typing is lost at the most.
constexpr int delay = 3000; // milliseconds
const QString suffix = u".bozza"_s;

Drafts *running = nullptr;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw core::Error(core::tr("La bozza non si può leggere: %1.").arg(file.errorString()));
    return file.readAll();
}

QStringList sessionsIn(const QString &folder)
{
    return core::mapped(QDir(folder).entryList({u"sessione-*"_s}, QDir::Dirs | QDir::NoSymLinks),
                        [&folder](const QString &name) { return folder + u'/' + name; });
}

QStringList namesIn(const QString &session)
{
    return QDir(session).entryList({u'*' + suffix}, QDir::Files, QDir::Name);
}

// What cannot be read is told when drafts are offered.
std::optional<Draft> readable(const QString &file)
{
    try {
        return unpacked(contentOf(file));
    } catch (const core::Error &error) {
        core::logError(u"lettura di una bozza"_s, error);
        return {};
    }
}

/// A session's folder while nobody else may touch it.
class HeldFolder
{
public:
    explicit HeldFolder(const QString &path)
        : path_(path)
        , lock_(core::lockFolder(path))
    {
    }
    // Without drafts it is of no use.
    ~HeldFolder()
    {
        if (lock_ < 0)
            return;
        QDir().rmdir(path_);
        ::close(lock_);
    }
    HeldFolder(const HeldFolder &) = delete;
    HeldFolder &operator=(const HeldFolder &) = delete;

    bool isMine() const { return lock_ >= 0; }

private:
    QString path_;
    int lock_;
};

} // namespace

Drafts::Drafts(const QString &folder, const QString &database, const QString &user, QObject *parent)
    : QObject(parent)
    , folder_(folder)
    , database_(database)
    , user_(user)
{
    callAfter(later_, delay, this, &Drafts::flush);
    running = this;
}

Drafts::~Drafts()
{
    if (running == this)
        running = nullptr;
    if (own_)
        QDir().rmdir(own_->path());
    if (lock_ >= 0)
        ::close(lock_);
}

Drafts *Drafts::current()
{
    return running;
}

void Drafts::note(const EntryForm &form)
{
    changed_.insert(&form);
    if (!later_.isActive())
        later_.start();
}

void Drafts::drop(const EntryForm &form)
{
    changed_.remove(&form);
    if (const auto own = kept_.constFind(&form); own != kept_.cend()) {
        remove(*own);
        kept_.erase(own);
    }
}

void Drafts::leave(const EntryForm &form)
{
    changed_.remove(&form);
    kept_.remove(&form);
}

void Drafts::remove(const Own &own)
{
    if (!QFile::remove(own.file) && QFile::exists(own.file))
        core::logLine(u"eliminazione di una bozza"_s, own.file);
}

// What is typed goes on whatever happens here.
bool Drafts::flush()
{
    later_.stop();
    const QSet<const EntryForm *> changed = std::exchange(changed_, {});
    try {
        for (const EntryForm *form : changed)
            write(*form);
        failing_ = false;
        return true;
    } catch (const std::exception &error) {
        changed_ += changed;
        later_.start();
        if (!std::exchange(failing_, true)) {
            core::logError(u"scrittura di una bozza"_s, error);
            Q_EMIT failed(core::errorText(error));
        }
        return false;
    }
}

void Drafts::write(const EntryForm &form)
{
    auto draft = form.draft();
    if (!draft)
        return;
    draft->database = database_;
    draft->user = user_;
    const QByteArray unchanged = packed(*draft);
    Own own = kept_.value(&form);
    if (own.written == unchanged)
        return;
    if (own.file.isEmpty())
        own.file = newFile();
    draft->time = core::now();
    core::saveFile(own.file, packed(*draft), core::Readers::OwnerOnly);
    own.written = unchanged;
    kept_.insert(&form, own);
}

QString Drafts::newFile()
{
    // Between its making and its lock another program may have taken the folder for an abandoned one.
    constexpr int attempts = 10;
    for (int attempt = 0; lock_ < 0 && attempt < attempts; ++attempt) {
        QDir().mkpath(folder_);
        own_ = std::make_unique<QTemporaryDir>(folder_ + u"/sessione-XXXXXX"_s);
        own_->setAutoRemove(false);
        if (!own_->isValid())
            throw core::Error(
                core::tr("Nella cartella \"%1\" non si può scrivere: %2.").arg(folder_, own_->errorString()));
        lock_ = core::lockFolder(own_->path());
    }
    if (lock_ < 0)
        throw core::Error(core::tr("La cartella \"%1\" non si può riservare.").arg(folder_));
    return own_->filePath(QString::number(++count_) + suffix);
}

QList<KeptDraft> Drafts::draftsIn(const QString &session, const std::function<void(const QString &)> &unreadable) const
{
    const HeldFolder held(session);
    if (!held.isMine())
        return {};
    core::WorkFolder::removeAbandoned(session);
    QList<KeptDraft> found;
    for (const QString &name : namesIn(session)) {
        const QString file = session + u'/' + name;
        try {
            const Draft draft = unpacked(contentOf(file));
            if (draft.database == database_ && draft.user == user_)
                found.append({file, draft});
        } catch (const std::exception &error) {
            core::logError(u"lettura di una bozza"_s, error);
            const QString aside = u"%1-%2.illeggibile"_s.arg(session, name);
            unreadable(QFile::rename(file, aside) ? aside : file);
        }
    }
    return found;
}

QList<KeptDraft> Drafts::abandoned(const std::function<void(const QString &file)> &unreadable) const
{
    QList<KeptDraft> found;
    for (const QString &session : sessionsIn(folder_))
        found += draftsIn(session, unreadable);
    std::sort(found.begin(), found.end(),
              [](const KeptDraft &a, const KeptDraft &b) { return a.draft.time > b.draft.time; });
    return found;
}

bool Drafts::take(const KeptDraft &kept, const std::function<void()> &body)
{
    const HeldFolder held(QFileInfo(kept.file).absolutePath());
    if (!held.isMine() || !QFile::exists(kept.file))
        return false;
    body();
    remove({kept.file, {}});
    return true;
}

void Drafts::follow(const QString &folder, const QString &from, const QString &to)
{
    for (const QString &session : sessionsIn(folder)) {
        const HeldFolder held(session);
        if (!held.isMine())
            continue;
        for (const QString &name : namesIn(session)) {
            const QString file = session + u'/' + name;
            std::optional<Draft> draft = readable(file);
            if (!draft || draft->database != from)
                continue;
            draft->database = to;
            core::saveFile(file, packed(*draft), core::Readers::OwnerOnly);
        }
    }
}

} // namespace ui
