#pragma once
#include "platform/ui/Draft.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QTimer>

#include <QTemporaryDir>
#include <functional>
#include <memory>

namespace ui {

class EntryForm;

/// A draft in a file that some session left behind.
struct KeptDraft
{
    QString file;
    Draft draft;
};

/// The drafts of a session: what its forms hold unsaved is written to a file of the account a few seconds after it was
/// typed, and the file goes once that is saved or given up. So files are there only of sessions that were cut off.
///
/// Each session writes into a folder of its own, locked as long as it lives: what a session that still runs keeps is
/// nobody else's.
class Drafts : public QObject
{
    Q_OBJECT

public:
    /// Keeps drafts below `folder`, which need not be there yet, of `user` in `database`. One at a time.
    Drafts(const QString &folder, const QString &database, const QString &user, QObject *parent);
    ~Drafts() override;

    /// The one of the running session; null where drafts are kept nowhere.
    static Drafts *current();

    /// What stands in `form` has changed and is not saved.
    void note(const EntryForm &form);
    /// Nothing in `form` is unsaved any more.
    void drop(const EntryForm &form);
    /// `form` goes; what it held unsaved stays in its file.
    void leave(const EntryForm &form);
    /// Writes now what would be written in a few seconds; false when that failed.
    bool flush();

    /// What sessions of this user in this database left behind that no longer run, the newest first. Files that are no
    /// draft are renamed, so that they are not looked at again, and handed to `unreadable`.
    QList<KeptDraft> abandoned(const std::function<void(const QString &file)> &unreadable) const;
    /// Lets `body` work on an abandoned draft and removes its file; the file stays when `body` throws. False, with
    /// nothing done, when another program has taken it meanwhile.
    static bool take(const KeptDraft &kept, const std::function<void()> &body);

    /// A database has moved: drafts below `folder` of sessions that no longer run and that belong to `from` belong to
    /// `to` from now on, of whatever user. Throws core::Error when one cannot be written.
    static void follow(const QString &folder, const QString &from, const QString &to);

Q_SIGNALS:
    /// What is typed cannot be kept; told once until it can be kept again.
    void failed(const QString &reason);

private:
    struct Own
    {
        QString file;
        QByteArray written;
    };

    QList<KeptDraft> draftsIn(const QString &session, const std::function<void(const QString &)> &unreadable) const;
    void write(const EntryForm &form);
    static void remove(const Own &own);
    QString newFile();

    QString folder_;
    QString database_;
    QString user_;
    std::unique_ptr<QTemporaryDir> own_; // made for the first draft
    int lock_ = -1;
    int count_ = 0;
    QHash<const EntryForm *, Own> kept_;
    QSet<const EntryForm *> changed_;
    QTimer later_;
    bool failing_ = false;
};

} // namespace ui
