#include "magazzino/forms/uMMGRicercaMovimentiMagazzino.h"

#include "host/Corvane3Impl.h"
#include "platform/core/Clock.h"
#include "platform/data/SqlText.h"
#include "platform/ui/DateEdit.h"

using namespace Qt::StringLiterals;

namespace {

ui::ListFilter dateFilter(const QString &name, const QString &label, const QString &before, const QString &after)
{
    return {.name = name,
            .label = label,
            .kind = ui::ListFilter::Kind::Date,
            .condition = [before, after](const QString &date) {
                return before + data::quoted(DateToString_YYYYMMDD(QDate::fromString(date, Qt::ISODate))) + after;
            }};
}

} // namespace

TMMGRicercaMovimentiMagazzino::TMMGRicercaMovimentiMagazzino(QWidget *owner)
    : TMMGRicercaBase(
          {.caption = u"Gestione movimenti di magazzino"_s,
           .menuCaption = u">Gestione movimenti di magazzino<"_s,
           .selectText =
               u"SELECT MOVI_MAGA.*, CATEGORIE_ANA_MAGA.CATEGORIA FROM MOVI_MAGA LEFT JOIN CATEGORIE_ANA_MAGA ON "
               "CATEGORIE_ANA_MAGA.IDCATEGORIA_ANA_MAGA=MOVI_MAGA.IDCATEGORIA_ANA_MAGA "_s,
           .orderText = u" ORDER BY DATA_MOVIMENTO DESC"_s,
           .keyField = u"IDMOVI_MAGA"_s,
           .columns = {{u"Data"_s, u"DATA_MOVIMENTO"_s, 80, ui::ListColumn::Width::Pixels,
                        ui::ListColumn::Display::Date},
                       {u"Codice"_s, u"CODICE"_s, 100},
                       {u"Descrizione"_s, u"DESCRIZIONE"_s, 0, ui::ListColumn::Width::Rest},
                       {u"Categoria"_s, u"CATEGORIA"_s, 40, ui::ListColumn::Width::Percent},
                       {u"Q.tà"_s, u"QUANTITA"_s, 90, ui::ListColumn::Width::Pixels, ui::ListColumn::Display::Quantity,
                        true}},
           .filters = {dateFilter(u"txtDataDal"_s, u"  Dal "_s, u"(DATA_MOVIMENTO >= "_s, {}),
                       dateFilter(u"txtDataAl"_s, u"    al "_s, u"DATA_MOVIMENTO <= "_s, u")"_s)},
           .newHint = u"Crea un nuovo\nmovimento di magazzino."_s,
           .closeHint = u"Chiude la maschera."_s},
          u"actInserimentoMovimentiMagazzino"_s, owner)
{
    setObjectName(u"MMGRicercaMovimentiMagazzino"_s);
    // Movements are deleted from their entry form.
    start({u"actChiudi"_s, u"actModifica"_s, {}, u"actNuovo"_s}, {u"actNuovo"_s, u"actModifica"_s, {}, u"actChiudi"_s});
    search();
}

void TMMGRicercaMovimentiMagazzino::resetFilters()
{
    const QDate firstOfMonth(core::today().year(), core::today().month(), 1);
    qobject_cast<ui::DateEdit *>(filterInput(0))->setDate(firstOfMonth.addMonths(-1));
    qobject_cast<ui::DateEdit *>(filterInput(1))->setDate(firstOfMonth.addMonths(1).addDays(-1));
}
