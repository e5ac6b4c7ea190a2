#include "magazzino/forms/uMMGRicercaBolleCarico.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/Messages.h"

using namespace Qt::StringLiterals;

namespace {

ui::SearchSpec spec()
{
    using Width = ui::ListColumn::Width;
    QList<ui::ListColumn> columns = documentColumns(u"FOR_"_s);
    columns.last().widthKind = Width::Rest;
    columns.append({u"Totale"_s, u"TOTALE_DOCUMENTO"_s, 110, Width::Pixels, ui::ListColumn::Display::Currency});
    return {.caption = u"Gestione bolle di carico"_s,
            .menuCaption = u">Bolle di carico<"_s,
            .list = {.selectText = u"SELECT * FROM BOLLE_CARICO "_s,
                     .orderText = u" ORDER BY ANNO DESC, NUMERO DESC"_s,
                     .keyField = u"IDBOLLA_CARICO"_s,
                     .columns = columns,
                     .filters = documentFilters(u"FOR_"_s, u"ANNO="_s)},
            .newHint = u"Crea una nuova bolla di carico."_s,
            .editHint = u"Modifica la bolla di carico selezionata."_s};
}

} // namespace

TMMGRicercaBolleCarico::TMMGRicercaBolleCarico(QWidget *owner)
    : TMMGRicercaBase(spec(), u"actInserimentoBolleCarico"_s, owner)
{
    setOnClose(ui::OnClose::Free); // unlike the other lists
    start();
}

bool TMMGRicercaBolleCarico::deleteRecord(int id)
{
    if (CanDeleteBollaCarico(id))
        return DeleteBollaCarico(id);
    core::warn(this, u"Non è possibile eliminare questa bolla di carico,\n\resistono dei dati correlati!"_s);
    return false;
}
