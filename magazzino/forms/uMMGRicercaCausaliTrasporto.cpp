#include "magazzino/forms/uMMGRicercaCausaliTrasporto.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/Messages.h"

using namespace Qt::StringLiterals;

TMMGRicercaCausaliTrasporto::TMMGRicercaCausaliTrasporto(QWidget *owner)
    : TMMGRicercaBase(
          {.caption = u"Gestione causali di trasporto"_s,
           .menuCaption = u">Causali di trasporto<"_s,
           .list = {.selectText = u"SELECT * FROM CAUSALI_TRASPORTO "_s,
                    .orderText = u" ORDER BY UPPER(CAUSALE_TRASPORTO)"_s,
                    .keyField = u"IDCAUSALE_TRASPORTO"_s,
                    .columns = {{u"Causale di trasporto"_s, u"CAUSALE_TRASPORTO"_s, 350, ui::ListColumn::Width::Rest}}},
           .openingSize = {700, 440},
           .newHint = u"Crea una nuova causale di trasporto."_s,
           .editHint = u"Modifica la causale di trasporto selezionata."_s},
          u"actInserimentoCausaliTrasporto"_s, owner)
{
    start();
}

// The deletion runs on the transport types: the type with the key of the chosen reason goes, the reason stays. Required
// as it stands.
bool TMMGRicercaCausaliTrasporto::deleteRecord(int id)
{
    if (CanDeleteCausaleTrasporto(id))
        return DeleteTipoTrasporto(id, true);
    core::warn(this, u"Impossibile eliminare, esistono dei dati correlati!"_s);
    return false;
}
