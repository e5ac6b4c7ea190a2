// Valuing issues at average cost again.
#include "benchmark/Bench.h"

#include "magazzino/MMGUtils.h"
#include "magazzino/schema/ModuleSteps.h"
#include "platform/data/Connection.h"
#include "platform/data/SqlText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int movementsOfOne = 500;

struct Issue
{
    int id;
    double value;
    double amount;
};

// The movements read once in their order, then every issue written, in the order in which they are stored.
void revalueBare(Bare &bare, const QString &where)
{
    bare.begin();
    {
        QList<Issue> issues;
        bare.fetch(u"SELECT IDMOVI_MAGA, CODICE, DATA_MOVIMENTO, TIPO_MOVIMENTO, QUANTITA, VALORE, VALORE_IMPORTO FROM "
                   "MOVI_MAGA %1 ORDER BY UPPER(CODICE), DATA_MOVIMENTO, IDMOVI_MAGA"_s.arg(where),
                   [&issues](const QSqlQuery &row) {
                       if (row.value(3).toString() == u"Scarico")
                           issues.append({row.value(0).toInt(), row.value(5).toDouble(), row.value(6).toDouble()});
                   });
        std::sort(issues.begin(), issues.end(), [](const Issue &a, const Issue &b) { return a.id < b.id; });
        QSqlQuery update =
            bare.prepared(u"UPDATE MOVI_MAGA SET VALORE = ?, VALORE_IMPORTO = ? WHERE IDMOVI_MAGA = ?"_s);
        for (const Issue &issue : std::as_const(issues))
            Bare::run(update, {issue.value, issue.amount, issue.id});
    }
    bare.commit();
}

void revalueEveryArticle(data::Connection &connection)
{
    for (const schema::Step &step : schema::moduleSteps()) {
        if (!step.action)
            continue;
        data::Transaction transaction(connection);
        step.action(connection);
        transaction.commit();
    }
}

} // namespace

void measureRevaluation(Bench &bench)
{
    // The last articles have no movements of documents.
    const QString code = articleCode(bench.size.articles);
    makeMovements(bench.program().connection(), code, movementsOfOne);
    bench.add({.program = [&] { RivalorizzaScarichiMagazzino(code, true); },
               .floor = [&] { revalueBare(bench.bare(), u"WHERE UPPER(CODICE) = "_s + data::quoted(code)); }},
              {.workload = u"revaluation of one article, 500 movements"_s, .rows = movementsOfOne, .target = 2});
    bench.add({.program = [&] { revalueEveryArticle(bench.program().connection()); },
               .floor = [&] { revalueBare(bench.bare(), {}); },
               .runs = 5},
              {.workload = u"revaluation of every article"_s, .rows = bench.movements(), .target = 2});
}

} // namespace bench
