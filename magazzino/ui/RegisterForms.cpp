#include "magazzino/ui/RegisterForms.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/uMMGModMagazzino.h"
#include "platform/ui/CommandRegistry.h"

using namespace Qt::StringLiterals;

TMMGInserimentoRegistro::TMMGInserimentoRegistro(const ui::RegisterSpec &spec, const QString &dataSet, QWidget *owner)
    : TMMGInserimento(spec, Modulo().dataSet(dataSet), owner)
{
    finish();
}

TMMGRicercaRegistro::TMMGRicercaRegistro(const ui::RegisterSpec &spec, QWidget *owner)
    : RegisterList(
          spec, ModuleConnection(),
          [entry = u"actInserimento"_s + spec.name]() -> ui::EntryForm & {
              return Modulo().commands().entryForm(entry);
          },
          owner)
{
}
