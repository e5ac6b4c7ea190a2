#include "magazzino/forms/uMMGRicercaDdTScarico.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/reports/MMGStampe.h"

using namespace Qt::StringLiterals;

TMMGRicercaDdTScarico::TMMGRicercaDdTScarico(QWidget *owner)
    : TMMGRicercaBase(
          {.caption = u"Gestione D.d.T. di scarico"_s,
           .menuCaption = u">D.d.T. di scarico<"_s,
           .selectText = u"SELECT * FROM DDT_SCARICO "_s,
           .orderText = u" ORDER BY ANNO DESC, NUMERO DESC"_s,
           .keyField = u"IDDDT_SCARICO"_s,
           .columns = {{u"N."_s, u"NUMERO"_s, 50, ui::ListColumn::Width::Pixels, ui::ListColumn::Display::Integer},
                       {u"Data"_s, u"DATA"_s, 80, ui::ListColumn::Width::Pixels, ui::ListColumn::Display::Date},
                       {u"Codice"_s, u"CLI_CODICE"_s, 120},
                       {u"Ragione sociale"_s, u"CLI_RAGIONESOCIALE"_s, 350}},
           .filters = documentFilters(u"CLI_"_s, u"ANNO = "_s),
           .newHint = u"Crea un nuovo D.d.T. di scarico."_s,
           .editHint = u"Modifica il D.d.T. di scarico selezionato."_s,
           .closeHint = u"Chiude la maschera."_s},
          u"actInserimentoDdTScarico"_s, owner)
{
    setObjectName(u"MMGRicercaDdTScarico"_s);
    addPrintCommands(StampaDdTScarico, u"D.d.T. di scarico"_s);
    start(documentListCommands);
}

bool TMMGRicercaDdTScarico::deleteRecord(int id)
{
    return DeleteDdTScarico(id, true);
}
