#include "magazzino/documents/Rubrica.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/Clock.h"
#include "platform/core/Lists.h"
#include "platform/data/Connection.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 keptSeconds = 60;
// A text that nothing is found for is often typed on.
constexpr qint64 keptSecondsWithoutResult = 3;

} // namespace

Rubrica::Rubrica(QString table, QString key, QList<ColonnaRubrica> columns)
    : table_(std::move(table))
    , key_(std::move(key))
    , columns_(std::move(columns))
{
}

void Rubrica::refresh()
{
    if (!readAt_.isValid() || readAt_.secsTo(core::now()) >= keptSeconds)
        read();
}

void Rubrica::read()
{
    const QStringList names = core::mapped(columns_, &ColonnaRubrica::column);
    const data::Rows rows = ModuleConnection().run(
        u"SELECT %1, %2 FROM %3 ORDER BY UPPER(%4)"_s.arg(key_, names.join(u", "_s), table_, names.first()));
    voci_.clear();
    words_.reset(rows.size());
    for (qsizetype row = 0; row < rows.size(); ++row) {
        VoceRubrica voce{rows.values(row).first().toInt(), {}};
        QStringList called;
        QStringList others;
        for (qsizetype i = 0; i < columns_.size(); ++i) {
            voce.testi.append(rows.values(row)[i + 1].toString());
            (columns_[i].isName ? called : others).append(voce.testi.last());
        }
        words_.add(called, others);
        voci_.append(voce);
    }
    readAt_ = core::now();
}

QList<VoceRubrica> Rubrica::find(const QString &text, qsizetype most)
{
    QList<VoceRubrica> found = known(text, most);
    if (found.isEmpty() && readAt_.secsTo(core::now()) >= keptSecondsWithoutResult) {
        read();
        found = known(text, most);
    }
    return found;
}

QList<VoceRubrica> Rubrica::known(const QString &text, qsizetype most) const
{
    if (text.trimmed().isEmpty())
        return voci_.mid(0, most);
    return core::mapped(words_.find(text, most), [this](qsizetype position) { return voci_[position]; });
}
