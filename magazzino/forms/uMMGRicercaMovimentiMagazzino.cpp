#include "magazzino/forms/uMMGRicercaMovimentiMagazzino.h"

#include "platform/core/Clock.h"

using namespace Qt::StringLiterals;

namespace {

// From the first day of the previous month to the last one of the current month.
QDate firstDay()
{
    return QDate(core::today().year(), core::today().month(), 1).addMonths(-1);
}

QDate lastDay()
{
    return firstDay().addMonths(2).addDays(-1);
}

ui::SearchSpec spec()
{
    using Column = ui::ListColumn;
    return {
        .caption = u"Gestione movimenti di magazzino"_s,
        .menuCaption = u">Gestione movimenti di magazzino<"_s,
        .list = {.selectText =
                     u"SELECT MOVI_MAGA.*, CATEGORIE_ANA_MAGA.CATEGORIA FROM MOVI_MAGA LEFT JOIN CATEGORIE_ANA_MAGA ON "
                     "CATEGORIE_ANA_MAGA.IDCATEGORIA_ANA_MAGA=MOVI_MAGA.IDCATEGORIA_ANA_MAGA "_s,
                 .orderText = u" ORDER BY DATA_MOVIMENTO DESC"_s,
                 .keyField = u"IDMOVI_MAGA"_s,
                 .columns = {{u"Data"_s, u"DATA_MOVIMENTO"_s, 80, Column::Width::Pixels, Column::Display::Date},
                             {u"Codice"_s, u"CODICE"_s, 100},
                             {u"Descrizione"_s, u"DESCRIZIONE"_s, 0, Column::Width::Rest},
                             {u"Categoria"_s, u"CATEGORIA"_s, 40, Column::Width::Percent},
                             {u"Q.tà"_s, u"QUANTITA"_s, 90, Column::Width::Pixels, Column::Display::Quantity, true}},
                 .filters = {ui::dateFilter(u"txtDataDal"_s, u"  Dal "_s, u"(DATA_MOVIMENTO >= "_s, {}, firstDay),
                             ui::dateFilter(u"txtDataAl"_s, u"    al "_s, u"DATA_MOVIMENTO <= "_s, u")"_s, lastDay)}},
        .newHint = u"Crea un nuovo\nmovimento di magazzino."_s};
}

} // namespace

TMMGRicercaMovimentiMagazzino::TMMGRicercaMovimentiMagazzino(QWidget *owner)
    : TMMGRicercaBase(spec(), u"actInserimentoMovimentiMagazzino"_s, owner)
{
    // Movements are deleted from their entry form.
    start({u"actChiudi"_s, u"actModifica"_s, {}, u"actNuovo"_s}, {u"actNuovo"_s, u"actModifica"_s, {}, u"actChiudi"_s});
    search();
}
