// Lists filled on the screen.
#include "benchmark/Bench.h"

#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/MMGModSelezionaBase.h"
#include "platform/core/Clock.h"
#include "platform/ui/SearchForm.h"

using namespace Qt::StringLiterals;

namespace bench {

void measureLists(Bench &bench)
{
    auto &list = bench.program().form<ui::SearchForm>(u"actRicercaDdTScarico"_s);
    bench.add({.program =
                   [&] {
                       list.search();
                       settle();
                   },
               .floor =
                   [&] {
                       bench.bare().fetch(
                           u"SELECT IDDDT_SCARICO, NUMERO, DATA, CLI_CODICE, CLI_RAGIONESOCIALE FROM "
                           "DDT_SCARICO WHERE ANNO = %1 ORDER BY ANNO DESC, NUMERO DESC"_s.arg(core::today().year()));
                   }},
              {.workload = u"list of one year's delivery notes, grid filled"_s,
               .rows = bench.size.documents / years,
               .target = 1.5});

    TMMGModSelezionaBase &dialog = bench.program().module().selectionDialog(u"actModSelezionaArticolo"_s);
    dialog.Ripristina();
    dialog.show();
    bench.add({.program =
                   [&] {
                       dialog.Cerca();
                       settle();
                   },
               .floor =
                   [&] {
                       bench.bare().fetch(
                           u"SELECT A.IDANA_MAGA, A.CODICE, A.DESCRIZIONE, C.CATEGORIA FROM ANA_MAGA A LEFT JOIN "
                           "CATEGORIE_ANA_MAGA C ON C.IDCATEGORIA_ANA_MAGA = A.IDCATEGORIA_ANA_MAGA ORDER BY "
                           "UPPER(A.CODICE)"_s);
                   }},
              {.workload = u"article dialog without filter, rows shown"_s, .rows = bench.size.articles, .target = 1.5});
    dialog.hide();
}

} // namespace bench
