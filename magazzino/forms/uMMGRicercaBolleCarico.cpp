#include "magazzino/forms/uMMGRicercaBolleCarico.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/Messages.h"

using namespace Qt::StringLiterals;

TMMGRicercaBolleCarico::TMMGRicercaBolleCarico(QWidget *owner)
    : TMMGRicercaBase(
          {.caption = u"Gestione bolle di carico"_s,
           .menuCaption = u">Bolle di carico<"_s,
           .selectText = u"SELECT * FROM BOLLE_CARICO "_s,
           .orderText = u" ORDER BY ANNO DESC, NUMERO DESC"_s,
           .keyField = u"IDBOLLA_CARICO"_s,
           .columns = {{u"N."_s, u"NUMERO"_s, 50, ui::ListColumn::Width::Pixels, ui::ListColumn::Display::Integer},
                       {u"Data"_s, u"DATA"_s, 80, ui::ListColumn::Width::Pixels, ui::ListColumn::Display::Date},
                       {u"Codice"_s, u"FOR_CODICE"_s, 120},
                       {u"Ragione sociale"_s, u"FOR_RAGIONESOCIALE"_s, 350, ui::ListColumn::Width::Rest},
                       {u"Totale"_s, u"TOTALE_DOCUMENTO"_s, 110, ui::ListColumn::Width::Pixels,
                        ui::ListColumn::Display::Currency}},
           .filters = documentFilters(u"FOR_"_s, u"ANNO="_s),
           .newHint = u"Crea una nuova bolla di carico."_s,
           .editHint = u"Modifica la bolla di carico selezionata."_s,
           .closeHint = u"Chiude la maschera."_s},
          u"actInserimentoBolleCarico"_s, owner)
{
    setObjectName(u"MMGRicercaBolleCarico"_s);
    setOnClose(ui::OnClose::Free); // unlike the other lists
    start({u"actChiudi"_s, u"actModifica"_s, {}, u"actNuovo"_s, u"actElimina"_s});
}

bool TMMGRicercaBolleCarico::deleteRecord(int id)
{
    if (CanDeleteBollaCarico(id))
        return DeleteBollaCarico(id);
    core::warn(this, u"Non è possibile eliminare questa bolla di carico,\n\resistono dei dati correlati!"_s);
    return false;
}
