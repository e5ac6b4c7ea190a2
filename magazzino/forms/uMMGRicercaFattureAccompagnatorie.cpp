#include "magazzino/forms/uMMGRicercaFattureAccompagnatorie.h"

#include "host/users/Users.h"
#include "magazzino/MMGUtils.h"
#include "magazzino/reports/MMGStampe.h"
#include "platform/core/Messages.h"
#include "platform/data/SqlText.h"

using namespace Qt::StringLiterals;

namespace {

// The invoices with at least one row whose description holds the text.
QString rowCondition(const QString &text)
{
    return u"(FATT_ACC.IDFATT_ACC IN (SELECT FATT_ACC_DETT.IDFATT_ACC FROM FATT_ACC_DETT "
           "WHERE FATT_ACC_DETT.DESCRIZIONE CONTAINING "_s +
           data::quoted(text) + u"))"_s;
}

ui::SearchSpec spec()
{
    using Width = ui::ListColumn::Width;
    using Display = ui::ListColumn::Display;
    QList<ui::ListFilter> filters = documentFilters(u"CLI_"_s, u"ANNO="_s);
    filters.insert(2, {.name = u"txtDescrizioneRiga"_s, .label = u"Descrizione riga"_s, .condition = rowCondition});
    return {.caption = u"Gestione fatture accompagnatorie"_s,
            .menuCaption = u">Fatture accompagnatorie<"_s,
            .selectText = u"SELECT * FROM FATT_ACC "_s,
            .orderText = u" ORDER BY ANNO DESC, NUMERO DESC"_s,
            .keyField = u"IDFATT_ACC"_s,
            .columns = {{u"N."_s, u"NUMERO"_s, 50, Width::Pixels, Display::Integer},
                        {u"Data"_s, u"DATA"_s, 80, Width::Pixels, Display::Date},
                        {u"Codice"_s, u"CLI_CODICE"_s, 120},
                        {u"Ragione sociale"_s, u"CLI_RAGIONESOCIALE"_s, 350},
                        {u"Totale"_s, u"TOTALE_DOCUMENTO"_s, 110, Width::Pixels, Display::Currency},
                        {u"Pagato"_s, u"PAGATO"_s, 60, Width::Pixels, Display::Flag}},
            .filters = filters,
            .newHint = u"Crea una nuova fattura accompagnatoria."_s,
            .editHint = u"Modifica la fattura accompagnatoria selezionata."_s,
            .closeHint = u"Chiude la maschera."_s};
}

bool hasRight(const QString &right)
{
    return UserHasAbilitazione(right, GetKxCurrentUserName(), ModuleConnection());
}

} // namespace

TMMGRicercaFattureAccompagnatorie::TMMGRicercaFattureAccompagnatorie(QWidget *owner)
    : TMMGRicercaBase(spec(), u"actInserimentoFattureAccompagnatorie"_s, owner)
{
    setObjectName(u"MMGRicercaFattureAccompagnatorie"_s);
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
