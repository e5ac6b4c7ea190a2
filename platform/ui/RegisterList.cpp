#include "platform/ui/RegisterList.h"

#include "platform/ui/RegisterDeletion.h"

using namespace Qt::StringLiterals;

namespace ui {

namespace {

SearchSpec listOf(const RegisterSpec &spec)
{
    return {.caption = u"Gestione "_s + spec.lowerCaption(),
            .menuCaption = spec.menuCaption(),
            .list = {.selectText = spec.selectText(),
                     .orderText = spec.orderText,
                     .keyField = spec.key,
                     .columns = spec.listColumns,
                     .filters = spec.listFilters,
                     .letterColumn = spec.letterColumn,
                     .letterLike = spec.habits.letterLike,
                     .way = spec.habits.way,
                     .isLive = spec.habits.liveList},
            .openingSize = spec.listSize,
            .newHint = spec.newHint,
            .editHint = spec.editHint,
            .closeHint = spec.closeHint};
}

} // namespace

RegisterList::RegisterList(const RegisterSpec &spec, data::Connection &connection,
                           std::function<EntryForm &()> entryForm, QWidget *owner)
    : SearchForm(listOf(spec), connection, owner)
    , register_(spec)
    , database_(connection)
    , entryForm_(std::move(entryForm))
{
    setOnClose(spec.habits.onClose);
    setObjectName(spec.owner + u"Ricerca"_s + spec.name);
    start();
    if (spec.firstRows && !(spec.habits.liveList && searchAgain()))
        refill(*spec.firstRows);
}

bool RegisterList::deleteRecord(int id)
{
    return register_.deleteFromList ? register_.deleteFromList(id, *this)
                                    : deleteRegisterRecord(register_, id, database_, this);
}

} // namespace ui
