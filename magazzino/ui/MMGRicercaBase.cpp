#include "magazzino/ui/MMGRicercaBase.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/ui/CommandRegistry.h"
#include "platform/ui/EntryForm.h"

using namespace Qt::StringLiterals;

namespace {

// The statements' texts are fixed, values included: no blank before LIKE and two behind it.
ui::SearchSpec withFixedText(ui::SearchSpec spec)
{
    spec.list.way = data::Values::Way::Written;
    spec.list.letterLike = u"LIKE  "_s;
    spec.closeHint = u"Chiude la maschera."_s;
    return spec;
}

} // namespace

TMMGRicercaBase::TMMGRicercaBase(const ui::SearchSpec &spec, const QString &entryAction, QWidget *owner)
    : SearchForm(withFixedText(spec), ModuleConnection(), owner)
    , entryAction_(entryAction)
{
    setOnClose(ui::OnClose::Hide);
}

ui::EntryForm &TMMGRicercaBase::entryForm()
{
    return Modulo().commands().entryForm(entryAction_);
}

QList<ui::ListColumn> anagraficaColumns()
{
    return {{u"Codice"_s, u"CODICE"_s, 100},
            {u"Ragione sociale"_s, u"RAGIONESOCIALE"_s, 490},
            {u"Telefono 1"_s, u"TELEFONO1"_s, 90},
            {u"Telefono 2"_s, u"TELEFONO2"_s, 90}};
}

QList<ui::ListFilter> anagraficaFilters()
{
    return {ui::containing(u"txtCodice"_s, u"Codice"_s, u"CODICE"_s),
            ui::containing(u"txtRagioneSociale"_s, u"Ragione sociale"_s, u"RAGIONESOCIALE"_s)};
}
