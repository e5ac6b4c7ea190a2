#include "magazzino/forms/uMMGModSelezionaServizio.h"

using namespace Qt::StringLiterals;

TMMGModSelezionaServizio::TMMGModSelezionaServizio(QWidget *owner)
    : TMMGModSelezionaBase(
          itemSelection(u"Seleziona un servizio"_s, u"SERVIZI"_s, u"IDSERVIZIO"_s, host::serviceCategories), owner)
{
}
