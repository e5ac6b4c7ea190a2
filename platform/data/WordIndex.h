#pragma once
#include <QList>
#include <QStringList>

namespace data {

/// `text` for comparing without case and accents: in the database's capitals, "CAFFE" for "Caffè".
QString searchable(const QString &text);

/// Records held in memory by their texts: searching them by a key's stroke asks nobody.
class WordIndex
{
public:
    /// Forgets all, and makes room for `count` records.
    void reset(qsizetype count);
    /// Takes the next record: what it is called, codes or names, and whatever else it is found by.
    void add(const QStringList &names, const QStringList &others);
    /// Positions of at most `most` records that have every word of `text`, whatever case and accents: first those that
    /// are called so, then those of which a name begins with it, those of which a name contains it, and the rest, each
    /// group in the order of add(). Nothing for a text of blanks.
    QList<qsizetype> find(const QString &text, qsizetype most) const;

private:
    struct Entry
    {
        QString names; // each behind a line's end
        QString all;
    };
    QList<Entry> entries_;
};

} // namespace data
