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
    CreaGrigliaVuota();
}

ui::EntryForm &TMMGRicercaBase::entryForm()
{
    return Modulo().commands().entryForm(entryAction_);
}
