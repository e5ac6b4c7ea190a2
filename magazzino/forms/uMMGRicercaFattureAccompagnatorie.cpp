#include "magazzino/forms/uMMGRicercaFattureAccompagnatorie.h"

#include "host/users/Users.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/reports/MMGStampe.h"
#include "platform/core/Messages.h"

using namespace Qt::StringLiterals;

namespace {

ui::SearchSpec spec()
{
    using Column = ui::ListColumn;
    QList<ui::ListFilter> filters = documentFilters(u"CLI_"_s, u"ANNO="_s);
    // The invoices with at least one row whose description holds the text.
    filters.insert(2, ui::textFilter(u"txtDescrizioneRiga"_s, u"Descrizione riga"_s,
                                     u"(FATT_ACC.IDFATT_ACC IN (SELECT FATT_ACC_DETT.IDFATT_ACC FROM FATT_ACC_DETT "
                                     "WHERE FATT_ACC_DETT.DESCRIZIONE CONTAINING "_s,
                                     u"))"_s));
    return {.caption = u"Gestione fatture accompagnatorie"_s,
            .menuCaption = u">Fatture accompagnatorie<"_s,
            .list = {.selectText = u"SELECT * FROM FATT_ACC "_s,
                     .orderText = u" ORDER BY ANNO DESC, NUMERO DESC"_s,
                     .keyField = u"IDFATT_ACC"_s,
                     .columns = documentColumns(u"CLI_"_s) +
                                QList<ui::ListColumn>{
                                    {u"Totale"_s, u"TOTALE_DOCUMENTO"_s, 110, Column::Width::Pixels,
                                     Column::Display::Currency},
                                    {u"Pagato"_s, u"PAGATO"_s, 60, Column::Width::Pixels, Column::Display::Flag}},
                     .filters = filters},
            .newHint = u"Crea una nuova fattura accompagnatoria."_s,
            .editHint = u"Modifica la fattura accompagnatoria selezionata."_s};
}

bool hasRight(const QString &right)
{
    return UserHasAbilitazione(right, GetKxCurrentUserName(), ModuleConnection());
}

} // namespace

TMMGRicercaFattureAccompagnatorie::TMMGRicercaFattureAccompagnatorie(QWidget *owner)
    : TMMGRicercaBase(spec(), u"actInserimentoFattureAccompagnatorie"_s, owner)
{
    addPrintCommands(StampaFatturaAccompagnatoria, u"Fattura accompagnatoria"_s);
    start(documentListCommands);
}

void TMMGRicercaFattureAccompagnatorie::newRecord()
{
    if (hasRight(u"Fatture acc. (modifica)"_s))
        TMMGRicercaBase::newRecord();
    else
        host::refuseForRights(this);
}

bool TMMGRicercaFattureAccompagnatorie::deleteRecord(int id)
{
    if (hasRight(u"Fatture acc. (eliminazione)"_s))
        return DeleteFatturaAccompagnatoria(id, true);
    host::refuseForRights(this);
    return false;
}
