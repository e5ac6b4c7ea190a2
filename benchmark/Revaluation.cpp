// Valuing issues at average cost again.
#include "benchmark/Bench.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/schema/ModuleSteps.h"
#include "platform/core/Progress.h"
#include "platform/data/Connection.h"
#include "platform/data/SqlText.h"

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int movementsOfOne = 500;

// Inside the server: the movements read once in their order, then every issue written, in the order in which they are
// stored.
void revalueBare(Bare &bare, const QString &which)
{
    bare.begin();
    bare.fetch(uR"(EXECUTE BLOCK RETURNS (N INTEGER) AS DECLARE I INTEGER; DECLARE Q DECIMAL(13, 2);
DECLARE V DECIMAL(13, 2); BEGIN
  N = 0;
  FOR SELECT IDMOVI_MAGA, QUANTITA, VALORE_IMPORTO FROM MOVI_MAGA WHERE %1
    ORDER BY UPPER(CODICE), DATA_MOVIMENTO, IDMOVI_MAGA INTO :I, :Q, :V DO N = N + 1;
  UPDATE MOVI_MAGA SET VALORE = ABS(VALORE), VALORE_IMPORTO = QUANTITA * ABS(VALORE)
    WHERE %1 AND TIPO_MOVIMENTO = 'Scarico';
  SUSPEND;
END)"_s.arg(which));
    bare.commit();
}

void revalueEveryArticle(data::Connection &connection)
{
    core::Progress progress;
    for (const schema::Step &step : schema::moduleSteps()) {
        if (!step.action)
            continue;
        data::Transaction transaction(connection);
        step.action(connection, progress);
        transaction.commit();
    }
}

} // namespace

void measureRevaluation(Bench &bench)
{
    // The last articles have no movements of documents.
    const QString code = articleCode(bench.size.articles);
    makeMovements(ModuleConnection(), code, movementsOfOne);
    bench.add({.program = [&] { RivalorizzaScarichiMagazzino(code, true); },
               .floor = [&] { revalueBare(bench.bare(), u"UPPER(CODICE) = "_s + data::quoted(code)); }},
              {.workload = u"revaluation of one article, 500 movements"_s, .rows = movementsOfOne, .target = 2});
    bench.add({.program = [&] { revalueEveryArticle(ModuleConnection()); },
               .floor = [&] { revalueBare(bench.bare(), u"1 = 1"_s); },
               .runs = 5},
              {.workload = u"revaluation of every article"_s, .rows = movements(), .target = 1.2});
}

} // namespace bench
