#include "magazzino/forms/uMMGModSelezionaCliente.h"

#include "platform/ui/Filters.h"

using namespace Qt::StringLiterals;

namespace {

SelectionSpec spec()
{
    SelectionSpec customers = anagraficaSelection(u"Seleziona un cliente"_s, u"CLIENTI"_s, u"IDCLIENTE"_s);
    customers.list.filters = {ui::containing(u"txtRagioneSociale"_s, u"Ragione sociale"_s, u"RAGIONESOCIALE"_s)};
    customers.searchCommands = true;
    return customers;
}

} // namespace

TMMGModSelezionaCliente::TMMGModSelezionaCliente(QWidget *owner)
    : TMMGModSelezionaBase(spec(), owner)
{
}
