#include "magazzino/MMGUtils.h"
#include "platform/core/Decimal.h"
#include "platform/core/Error.h"
#include "platform/core/Log.h"
#include "platform/data/Connection.h"
#include "platform/data/SqlText.h"

#include <algorithm>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// Quantity and value in stock, in exact hundredths.
struct Giacenza
{
    qint64 quantita = 0;
    qint64 valore = 0;

    // A negative stock with a positive value, or the reverse, still has a positive cost.
    double costoMedio() const
    {
        return quantita == 0 ? 0 : std::fabs(core::fromHundredths(valore) / core::fromHundredths(quantita));
    }
};

struct Movimento
{
    int id = 0;
    QDate data;
    bool scarico = false;
    qint64 quantita = 0;
    qint64 importo = 0;
};

QString ofArticle(const QString &codice)
{
    return u" FROM MOVI_MAGA WHERE UPPER(CODICE) = "_s + data::quoted(codice.toUpper());
}

// All movements of an article by date, those of one day by key. The database decides what an issue is.
QList<Movimento> readMovements(const QString &codice)
{
    const data::Rows rows =
        ModuleConnection().select(u"SELECT IDMOVI_MAGA, DATA_MOVIMENTO, IIF(TIPO_MOVIMENTO = "_s +
                                  data::quoted(u"Scarico"_s) + u", 1, 0) AS SCARICO, QUANTITA, VALORE_IMPORTO"_s +
                                  ofArticle(codice) + u" ORDER BY DATA_MOVIMENTO, IDMOVI_MAGA"_s);
    QList<Movimento> movements;
    movements.reserve(rows.size());
    for (qsizetype row = 0; row < rows.size(); ++row) {
        movements.append({.id = rows.integer(row, u"IDMOVI_MAGA"),
                          .data = rows.at(row, u"DATA_MOVIMENTO").toDate(),
                          .scarico = rows.integer(row, u"SCARICO") != 0,
                          .quantita = core::toHundredths(rows.number(row, u"QUANTITA")),
                          .importo = core::toHundredths(rows.number(row, u"VALORE_IMPORTO"))});
    }
    return movements;
}

void writeValue(data::Connection &connection, int id, double valore, double importo)
{
    connection.run(u"UPDATE MOVI_MAGA SET VALORE = ?, VALORE_IMPORTO = ? WHERE IDMOVI_MAGA = ?"_s,
                   {core::roundDecimal(valore, 2), importo, id});
}

// The average at an issue's date takes in the whole day: loads, the issue itself and the day's later issues with the
// amounts they had, its earlier issues with their new ones. Intended, since it decides the figures stored.
void revalue(data::Connection &connection, const QList<Movimento> &movements)
{
    Giacenza giacenza;
    qsizetype counted = 0;
    for (const Movimento &movement : movements) {
        for (; counted < movements.size() && movements[counted].data <= movement.data; ++counted) {
            giacenza.quantita += movements[counted].quantita;
            giacenza.valore += movements[counted].importo;
        }
        if (!movement.scarico)
            continue;
        const double valore = giacenza.costoMedio();
        const double importo = core::roundDecimal(core::fromHundredths(movement.quantita) * valore, 2);
        writeValue(connection, movement.id, valore, importo);
        giacenza.valore += core::toHundredths(importo) - movement.importo;
    }
}

} // namespace

double GetValoreScaricoCostoMedio(const QString &codice, QDate date)
{
    return core::namingErrors(u"GetValoreScaricoCostoMedio", [&] {
        const data::Rows rows = ModuleConnection().select(
            u"SELECT SUM(QUANTITA) AS QTA,SUM(VALORE_IMPORTO) AS VALORE"_s + ofArticle(codice) +
            u" AND DATA_MOVIMENTO <= "_s + data::quoted(DateToString_YYYYMMDD(date)));
        if (rows.isEmpty())
            return 0.0;
        const Giacenza giacenza = {core::toHundredths(rows.number(0, u"QTA")),
                                   core::toHundredths(rows.number(0, u"VALORE"))};
        return giacenza.costoMedio();
    });
}

void RivalorizzaScarichiMagazzino(const QString &codice, bool useTransaction)
{
    const QList<Movimento> movements =
        core::namingErrors(u"RivalorizzaScarichiMagazzino", [&] { return readMovements(codice); });
    if (std::none_of(movements.begin(), movements.end(), [](const Movimento &movement) { return movement.scarico; }))
        return;
    try {
        data::Connection &connection = ModuleConnection();
        std::optional<data::Transaction> transaction;
        if (useTransaction)
            transaction.emplace(connection);
        revalue(connection, movements);
        if (transaction)
            transaction->commit();
    } catch (const std::exception &error) {
        // Swallowed as required: a revaluation that fails leaves the values as they were and never stops its caller.
        core::logError(u"RivalorizzaScarichiMagazzino MOVI_MAGA"_s, error);
    }
}
