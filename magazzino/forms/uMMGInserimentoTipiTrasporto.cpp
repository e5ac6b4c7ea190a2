#include "magazzino/forms/uMMGInserimentoTipiTrasporto.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/Messages.h"

using namespace Qt::StringLiterals;

TMMGInserimentoTipiTrasporto::TMMGInserimentoTipiTrasporto(QWidget *owner)
    : TMMGInserimentoVoce({.caption = u"Inserimento / Modifica tipi di trasporto"_s,
                           .menuCaption = u">Inserimento tipi di trasporto<"_s,
                           .key = u"IDTIPO_TRASPORTO"_s,
                           .generator = u"GN_IDTIPO_TRASPORTO"_s},
                          u"adsTipiTrasporto"_s,
                          {.name = u"txtTipoTrasporto"_s,
                           .label = u"Tipo di trasporto"_s,
                           .column = u"TIPO_TRASPORTO"_s,
                           .maxLength = 50},
                          owner)
{
    setObjectName(u"MMGInserimentoTipiTrasporto"_s);
    refuseIf([this] { return testo()->isEmpty(); }, u"Non è stato indicato il tipo di trasporto!"_s);
    refuseIf([this] { return TipoTrasportoExists(testo()->text(), storedKey()); },
             u"Esiste già un tipo di trasporto con questo nome!"_s);
    start(ui::standardCommands);
}

bool TMMGInserimentoTipiTrasporto::deleteStored(int id)
{
    if (CanDeleteTipoTrasporto(id))
        return DeleteTipoTrasporto(id, true);
    core::warn(this, u"Non è possibile eliminare questa tipologia,\n\resistono dei dati correlati!"_s);
    return false;
}
