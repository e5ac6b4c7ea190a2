#include "magazzino/forms/uMMGRicercaFattureAccompagnatorie.h"

#include "magazzino/ui/FattureElettroniche.h"
#include "platform/core/Translation.h"

using namespace Qt::StringLiterals;

namespace {

ui::SearchSpec spec()
{
    using Column = ui::ListColumn;
    ui::SearchSpec own = documentList(fatturaAccompagnatoria());
    own.list.columns += {{u"Totale"_s, u"TOTALE_DOCUMENTO"_s, 110, Column::Width::Pixels, Column::Display::Currency},
                         {u"Pagato"_s, u"PAGATO"_s, 60, Column::Width::Pixels, Column::Display::Flag}};
    // The invoices with at least one row whose description holds the text.
    own.list.filters.insert(2, ui::textFilter(u"txtDescrizioneRiga"_s, core::tr("Descrizione riga"),
                                              u"(FATT_ACC.IDFATT_ACC IN (SELECT FATT_ACC_DETT.IDFATT_ACC FROM "
                                              "FATT_ACC_DETT WHERE FATT_ACC_DETT.DESCRIZIONE CONTAINING "_s,
                                              u"))"_s));
    return own;
}

} // namespace

TMMGRicercaFattureAccompagnatorie::TMMGRicercaFattureAccompagnatorie(QWidget *owner)
    : TMMGRicercaDocumenti(fatturaAccompagnatoria(), spec(), owner)
{
    addCommand({.name = u"actFattureElettroniche"_s,
                .caption = core::tr("Fattura elettronica"),
                .run = [this] { mostraFatturaElettronica(selectedKey()); },
                .icon = ui::Icon::Export,
                .hint = core::tr("Apre la finestra delle fatture elettroniche con la fattura selezionata.")});
    placeFurther({u"actFattureElettroniche"_s});
}
