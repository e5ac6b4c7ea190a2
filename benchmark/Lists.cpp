// Lists filled on the screen.
#include "benchmark/Bench.h"

#include "magazzino/uMMGModMagazzino.h"
#include "magazzino/ui/MMGModSelezionaBase.h"
#include "platform/core/Clock.h"
#include "platform/core/Error.h"
#include "platform/data/SqlText.h"
#include "platform/ui/CommandRegistry.h"
#include "platform/ui/SearchForm.h"

#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

// What a key in the article list does once the fingers rest.
void measureArticleSearch(Bench &bench, const QString &typed, const QString &kind)
{
    const QString command = u"actRicercaArticoli"_s;
    auto *registry = ui::CommandRegistry::having(command);
    auto *list = registry ? qobject_cast<ui::SearchForm *>(registry->openForm(command)) : nullptr;
    auto *code = list ? list->findChild<QLineEdit *>(u"txtCodice"_s) : nullptr;
    if (!code)
        throw core::Error(u"There is no list of articles."_s);
    code->setText(typed);
    settle();
    bench.add({.program =
                   [list] {
                       list->search();
                       settle();
                   },
               .floor =
                   [&bench, &typed] {
                       bench.bare().fetch(
                           u"SELECT A.IDANA_MAGA, A.CODICE, A.DESCRIZIONE, C.CATEGORIA, UM.UM, A.PREZZO, A.COSTO FROM "
                           "ANA_MAGA A LEFT JOIN CATEGORIE_ANA_MAGA C ON C.IDCATEGORIA_ANA_MAGA = "
                           "A.IDCATEGORIA_ANA_MAGA LEFT JOIN UM ON UM.IDUM = A.IDUM WHERE A.CODICE CONTAINING %1 "
                           "ORDER BY UPPER(A.CODICE)"_s.arg(data::quoted(typed)));
                   }},
              {.workload = u"a key in the article list, "_s + kind, .target = 50, .milliseconds = true});
    code->clear();
}

// The same documents again and again, as after each save, and those of other years, whose texts were not laid out yet.
void measureDocuments(Bench &bench)
{
    auto &list = bench.program().form<ui::SearchForm>(u"actRicercaDdTScarico"_s);
    auto *asked = list.findChild<QLineEdit *>(u"txtAnno"_s);
    const int thisYear = core::today().year();
    int year = thisYear;
    const auto choose = [&year, asked](int chosen) {
        year = chosen;
        asked->setText(QString::number(year));
        settle();
    };
    const auto program = [&list] {
        list.search();
        settle();
    };
    const auto floor = [&bench, &year] {
        bench.bare().fetch(u"SELECT IDDDT_SCARICO, NUMERO, DATA, CLI_CODICE, CLI_RAGIONESOCIALE FROM DDT_SCARICO WHERE "
                           "ANNO = %1 ORDER BY ANNO DESC, NUMERO DESC"_s.arg(year));
    };
    const int rows = bench.size.documents / years;
    bench.add({.program = program, .floor = floor},
              {.workload = u"list of one year's delivery notes, grid filled"_s, .rows = rows, .target = 1.5});
    bench.add({.program = program,
               .floor = floor,
               .prepare = [&] { choose(year > thisYear - years + 1 ? year - 1 : thisYear); }},
              {.workload = u"list of other delivery notes each time"_s, .rows = rows});
    choose(thisYear);
}

} // namespace

void measureLists(Bench &bench)
{
    measureArticleSearch(bench, u"1234"_s, u"few rows"_s);
    measureArticleSearch(bench, u"art0"_s, u"all rows"_s);
    measureDocuments(bench);
    TMMGModSelezionaBase &dialog = Modulo().selectionDialog(u"actModSelezionaArticolo"_s);
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
