#include "host/registers/RegisterList.h"

#include "host/registers/RegisterDeletion.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

ui::SearchSpec listOf(const RegisterSpec &spec)
{
    return {.caption = u"Gestione "_s + spec.lowerCaption(),
            .menuCaption = u">%1<"_s.arg(spec.caption),
            .list = {.selectText = spec.selectText(),
                     .orderText = spec.orderText,
                     .keyField = spec.key,
                     .columns = spec.listColumns,
                     .filters = spec.listFilters,
                     .letterColumn = spec.letterColumn}};
}

} // namespace

RegisterList::RegisterList(const RegisterSpec &spec, data::Connection &connection,
                           std::function<ui::EntryForm &()> entryForm, QWidget *owner)
    : SearchForm(listOf(spec), connection, owner)
    , register_(spec)
    , database_(connection)
    , entryForm_(std::move(entryForm))
{
    setObjectName(u"Ricerca"_s + spec.name);
    start();
    search();
}

bool RegisterList::deleteRecord(int id)
{
    return deleteRegisterRecord(register_, id, database_, this);
}

} // namespace host
