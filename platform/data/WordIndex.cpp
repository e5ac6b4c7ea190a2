#include "platform/data/WordIndex.h"

#include "platform/data/SqlText.h"

namespace data {

namespace {

constexpr QChar separator = u'\n';

bool hasAll(const QString &text, const QStringList &words)
{
    return std::all_of(words.begin(), words.end(), [&](const QString &word) { return text.contains(word); });
}

} // namespace

QString searchable(const QString &text)
{
    QString plain;
    plain.reserve(text.size());
    for (const QChar letter : text.normalized(QString::NormalizationForm_D)) {
        if (!letter.isMark())
            plain.append(letter);
    }
    return capitalsOf(plain);
}

void WordIndex::reset(qsizetype count)
{
    entries_.clear();
    entries_.reserve(count);
}

void WordIndex::add(const QStringList &names, const QStringList &others)
{
    Entry entry;
    for (const QString &name : names)
        entry.names += separator + searchable(name);
    entry.names += separator;
    entry.all = entry.names + searchable(others.join(u' '));
    entries_.append(std::move(entry));
}

QList<qsizetype> WordIndex::find(const QString &text, qsizetype most) const
{
    const QString wanted = searchable(text).simplified();
    if (wanted.isEmpty())
        return {};
    const QStringList words = wanted.split(u' ');
    QList<qsizetype> called;
    QList<qsizetype> beginning;
    QList<qsizetype> inName;
    QList<qsizetype> elsewhere;
    for (qsizetype position = 0; position < entries_.size(); ++position) {
        const QString &names = entries_[position].names;
        if (!names.contains(wanted)) {
            if (elsewhere.size() < most && hasAll(entries_[position].all, words))
                elsewhere.append(position);
        } else if (!names.contains(separator + wanted)) {
            inName.append(position);
        } else {
            (names.contains(separator + wanted + separator) ? called : beginning).append(position);
        }
    }
    return (called + beginning + inName + elsewhere).mid(0, most);
}

} // namespace data
