#include "magazzino/forms/uMMGRicercaTipiTrasporto.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/Messages.h"

using namespace Qt::StringLiterals;

TMMGRicercaTipiTrasporto::TMMGRicercaTipiTrasporto(QWidget *owner)
    : TMMGRicercaBase(
          {.caption = u"Gestione tipi di trasporto"_s,
           .menuCaption = u">Tipi di trasporto<"_s,
           .list = {.selectText = u"SELECT * FROM TIPI_TRASPORTO "_s,
                    .orderText = u" ORDER BY UPPER(TIPO_TRASPORTO)"_s,
                    .keyField = u"IDTIPO_TRASPORTO"_s,
                    .columns = {{u"Tipo di trasporto"_s, u"TIPO_TRASPORTO"_s, 350, ui::ListColumn::Width::Rest}}},
           .openingSize = {700, 440},
           .newHint = u"Crea un nuovo tipo di trasporto."_s,
           .editHint = u"Modifica il tipo di trasporto selezionato."_s},
          u"actInserimentoTipiTrasporto"_s, owner)
{
    start();
}

bool TMMGRicercaTipiTrasporto::deleteRecord(int id)
{
    if (CanDeleteTipoTrasporto(id))
        return DeleteTipoTrasporto(id, true);
    core::warn(this, u"Impossibile eliminare, esistono dei dati correlati!"_s);
    return false;
}
