#include "magazzino/forms/uMMGInserimentoVettori.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/Messages.h"

using namespace Qt::StringLiterals;

// The address takes 100 characters although the column holds 50: the database refuses a longer one and the text stays
// in the form; this is intended.
TMMGInserimentoVettori::TMMGInserimentoVettori(QWidget *owner)
    : TMMGInserimentoAnagrafica({.form = {.caption = u"Inserimento / Modifica vettore"_s,
                                          .menuCaption = u">Inserimento vettori<"_s,
                                          .key = u"IDVETTORE"_s,
                                          .generator = u"GN_IDVETTORE"_s},
                                 .dataSet = u"adsVettore"_s,
                                 .codePrefix = u"VET"_s,
                                 .addressLength = 100,
                                 .vatNumberLength = 11},
                                owner)
{
    setObjectName(u"MMGInserimentoVettori"_s);
    refuseIf([this] { return codice()->isEmpty() || ragioneSociale()->isEmpty(); },
             u"Codice e ragione sociale sono obbligatori!"_s);
    refuseIf([this] { return CodiceVettoreExists(codice()->text(), storedKey()); },
             u"Codice già utilizzato da un altro vettore!"_s);
    finish();
}

bool TMMGInserimentoVettori::deleteStored(int id)
{
    if (CanDeleteVettore(id))
        return DeleteVettore(id, true);
    core::warn(this, u"Impossibile eliminare, esistono dei dati correlati!"_s);
    return false;
}
