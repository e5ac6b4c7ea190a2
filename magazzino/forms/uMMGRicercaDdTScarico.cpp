#include "magazzino/forms/uMMGRicercaDdTScarico.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/reports/MMGStampe.h"

using namespace Qt::StringLiterals;

TMMGRicercaDdTScarico::TMMGRicercaDdTScarico(QWidget *owner)
    : TMMGRicercaBase({.caption = u"Gestione D.d.T. di scarico"_s,
                       .menuCaption = u">D.d.T. di scarico<"_s,
                       .list = {.selectText = u"SELECT * FROM DDT_SCARICO "_s,
                                .orderText = u" ORDER BY ANNO DESC, NUMERO DESC"_s,
                                .keyField = u"IDDDT_SCARICO"_s,
                                .columns = documentColumns(u"CLI_"_s),
                                .filters = documentFilters(u"CLI_"_s, u"ANNO = "_s)},
                       .newHint = u"Crea un nuovo D.d.T. di scarico."_s,
                       .editHint = u"Modifica il D.d.T. di scarico selezionato."_s},
                      u"actInserimentoDdTScarico"_s, owner)
{
    addPrintCommands(StampaDdTScarico, u"D.d.T. di scarico"_s);
    start(documentListCommands);
}

bool TMMGRicercaDdTScarico::deleteRecord(int id)
{
    return DeleteDdTScarico(id, true);
}
