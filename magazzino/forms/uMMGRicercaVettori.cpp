#include "magazzino/forms/uMMGRicercaVettori.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/Messages.h"

using namespace Qt::StringLiterals;

TMMGRicercaVettori::TMMGRicercaVettori(QWidget *owner)
    : TMMGRicercaBase({.caption = u"Gestione vettori"_s,
                       .menuCaption = u">Vettori<"_s,
                       .list = {.selectText = u"SELECT * FROM VETTORI "_s,
                                .orderText = u" ORDER BY UPPER(CODICE)"_s,
                                .keyField = u"IDVETTORE"_s,
                                .columns = anagraficaColumns(),
                                .filters = anagraficaFilters(),
                                .letterColumn = u"RAGIONESOCIALE"_s},
                       .newHint = u"Crea un nuovo vettore."_s,
                       .editHint = u"Modifica il vettore selezionato."_s},
                      u"actInserimentoVettori"_s, owner)
{
    start();
}

bool TMMGRicercaVettori::deleteRecord(int id)
{
    if (CanDeleteVettore(id))
        return DeleteVettore(id, true);
    core::warn(this, u"Impossibile eliminare, esistono dei dati correlati!"_s);
    return false;
}
