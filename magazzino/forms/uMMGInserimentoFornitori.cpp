#include "magazzino/forms/uMMGInserimentoFornitori.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/ui/RecordChoice.h"
#include "platform/core/Messages.h"

using namespace Qt::StringLiterals;

TMMGInserimentoFornitori::TMMGInserimentoFornitori(QWidget *owner)
    : TMMGInserimentoAnagrafica({.form = {.caption = u"Inserimento / Modifica fornitori"_s,
                                          .menuCaption = u">Inserimento fornitori<"_s,
                                          .key = u"IDFORNITORE"_s,
                                          .generator = u"GN_IDFORNITORE"_s},
                                 .dataSet = u"adsFornitore"_s,
                                 .codePrefix = u"FOR"_s},
                                owner)
{
    setObjectName(u"MMGInserimentoFornitori"_s);
    auto *payment =
        declare(new ui::ChoiceField({.name = u"txtTipoPagamento"_s,
                                     .buttonName = u"cmdSelezionaTipoPagamento"_s,
                                     .label = u"Tipo di pagamento"_s,
                                     .keyColumn = u"IDTIPO_PAGAMENTO"_s,
                                     .choose = [] { return chooseRecord(u"actModSelezionaTipoPagamento"_s); },
                                     .textOf = [](int key) { return GetTipoPagamento(key).testo; },
                                     .clearable = true},
                                    generalPage()));
    place(taxGrid(), payment, 1, 0, 3);

    refuseIf([this] { return codice()->isEmpty(); }, u"Non è stato indicato il codice!"_s);
    refuseIf([this] { return ragioneSociale()->isEmpty(); }, u"Non è stata indicata la ragione sociale!"_s);
    refuseIf([this] { return CodiceFornitoreExists(codice()->text(), storedKey()); }, u"Codice già utilizzato!"_s);
    finish();
}

bool TMMGInserimentoFornitori::deleteStored(int id)
{
    if (CanDeleteFornitore(id))
        return DeleteFornitore(id);
    core::warn(this, u"Non è possibile eliminare questo fornitore,\n\resistono dei dati correlati!"_s);
    return false;
}
