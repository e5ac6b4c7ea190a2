#include "platform/ui/Draft.h"

#include "platform/core/Error.h"
#include "platform/core/Sha256.h"
#include "platform/core/Translation.h"

#include <QDataStream>
#include <QIODevice>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

// The last character is the version of what follows.
constexpr QByteArrayView mark = "corvane bozza 1";
constexpr auto streamVersion = QDataStream::Qt_6_0;

QByteArray checkOf(const QByteArray &content)
{
    return core::sha256Text(content).toLatin1();
}

QVariantList stateOf(const data::RecordState &record)
{
    return {record.id, record.isNew, record.keyWithoutRow, record.known.state(), record.knownKey};
}

data::RecordState recordOf(const QVariantList &state)
{
    return {.id = state.value(0).toInt(),
            .isNew = state.value(1).toBool(),
            .keyWithoutRow = state.value(2).toBool(),
            .known = data::StoredValues::ofState(state.value(3)),
            .knownKey = state.value(4).toInt()};
}

} // namespace

QByteArray packed(const Draft &draft)
{
    QByteArray content;
    QDataStream stream(&content, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
    const DraftTitle &title = draft.title;
    stream << draft.database << draft.user << draft.time << draft.action << title.kind << title.record << title.date
           << title.counterpart << title.rights << stateOf(draft.record) << draft.fields << draft.details;
    return mark.toByteArray() + '\n' + checkOf(content) + '\n' + content;
}

// Only what has its check is read any further: the stream would take a damaged length for memory to be had.
Draft unpacked(const QByteArray &content)
{
    const qsizetype checkAt = mark.size() + 1;
    const qsizetype contentAt = content.indexOf('\n', checkAt) + 1;
    const QByteArray whole = content.mid(contentAt);
    if (!content.startsWith(mark) || contentAt == 0 || content.mid(checkAt, contentAt - checkAt - 1) != checkOf(whole))
        throw core::Error(core::tr("La bozza è danneggiata o di un'altra versione del programma."));
    QDataStream stream(whole);
    stream.setVersion(streamVersion);
    Draft draft;
    QVariantList record;
    stream >> draft.database >> draft.user >> draft.time >> draft.action >> draft.title.kind >> draft.title.record >>
        draft.title.date >> draft.title.counterpart >> draft.title.rights >> record >> draft.fields >> draft.details;
    if (stream.status() != QDataStream::Ok)
        throw core::Error(core::tr("La bozza non è completa."));
    draft.record = recordOf(record);
    return draft;
}

} // namespace ui
