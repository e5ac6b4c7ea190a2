#include "magazzino/forms/uMMGRicercaFornitori.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/Messages.h"

#include <QLineEdit>

using namespace Qt::StringLiterals;

TMMGRicercaFornitori::TMMGRicercaFornitori(QWidget *owner)
    : TMMGRicercaBase({.caption = u"Gestione fornitori"_s,
                       .menuCaption = u">Fornitori<"_s,
                       .list = {.selectText = u"SELECT * FROM FORNITORI "_s,
                                .orderText = u" ORDER BY UPPER(RAGIONESOCIALE)"_s,
                                .keyField = u"IDFORNITORE"_s,
                                .columns = anagraficaColumns(),
                                .filters = anagraficaFilters(),
                                .letterColumn = u"RAGIONESOCIALE"_s},
                       .newHint = u"Crea un nuovo fornitore."_s,
                       .editHint = u"Modifica il fornitore selezionato."_s},
                      u"actInserimentoFornitori"_s, owner)
{
    start();
    AggiornaGriglia(u"WHERE UPPER(RAGIONESOCIALE) LIKE 'A%'"_s);
}

// The check asks for the code typed in the filter, not for the selected supplier; this is intended.
bool TMMGRicercaFornitori::deleteRecord(int id)
{
    if (CanDeleteFornitore(qobject_cast<QLineEdit *>(filterInput(0))->text()))
        return DeleteFornitore(id);
    core::warn(this, u"Non è possibile eliminare questo fornitore,\n\resistono dei dati correlati!"_s);
    return false;
}
