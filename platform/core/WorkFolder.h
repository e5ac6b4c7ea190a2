#pragma once
#include <QString>

namespace core {

/// Locks a folder as long as the handle that is returned is open, which is over with its program, however that ends.
/// -1 when somebody else has it, when it is gone, or when its file system has no locks. ::close() gives it back.
int lockFolder(const QString &path);

/// A hidden folder of this account alone, in which a file is made before it gets its place beside it. It goes away
/// with all it holds.
///
/// A program that is killed leaves its own behind. Each one is locked as long as its program lives, so the next one
/// that is made in the same place removes those that nobody works in any more.
class WorkFolder
{
public:
    /// Makes it in the folder `parent`. Throws core::Error when there is no such folder or it cannot be written to.
    explicit WorkFolder(const QString &parent);
    ~WorkFolder();
    WorkFolder(const WorkFolder &) = delete;
    WorkFolder &operator=(const WorkFolder &) = delete;

    /// Where it is, without a slash at the end.
    QString path() const { return path_; }
    /// The path of `name` in it.
    QString file(const QString &name) const { return path_ + u'/' + name; }

    /// Removes those in `parent` whose program has ended without removing them.
    static void removeAbandoned(const QString &parent);

private:
    QString path_;
    int lock_ = -1;
};

} // namespace core
