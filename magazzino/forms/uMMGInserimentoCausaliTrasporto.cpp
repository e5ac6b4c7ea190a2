#include "magazzino/forms/uMMGInserimentoCausaliTrasporto.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/Messages.h"

using namespace Qt::StringLiterals;

// No check before a save, unlike the transport types, and a limit above the column's 20 characters; both are intended.
// What the database refuses shows as the save error and stays in the form.
TMMGInserimentoCausaliTrasporto::TMMGInserimentoCausaliTrasporto(QWidget *owner)
    : TMMGInserimentoVoce({.caption = u"Inserimento / Modifica causali di trasporto"_s,
                           .menuCaption = u">Inserimento causali di trasporto<"_s,
                           .key = u"IDCAUSALE_TRASPORTO"_s,
                           .generator = u"GN_IDCAUSALE_TRASPORTO"_s},
                          u"adsCausaliTrasporto"_s,
                          {.name = u"txtCausaleTrasporto"_s,
                           .label = u"Causale di trasporto"_s,
                           .column = u"CAUSALE_TRASPORTO"_s,
                           .maxLength = 30},
                          owner)
{
    setObjectName(u"MMGInserimentoCausaliTrasporto"_s);
    start(ui::standardCommands);
}

bool TMMGInserimentoCausaliTrasporto::deleteStored(int id)
{
    if (CanDeleteCausaleTrasporto(id))
        return DeleteCausaleTrasporto(id, true);
    core::warn(this, u"Non è possibile eliminare questa causale,\n\resistono dei dati correlati!"_s);
    return false;
}
