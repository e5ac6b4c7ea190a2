#include "magazzino/documents/Scorte.h"

#include "magazzino/MMGUtils.h"
#include "platform/core/Clock.h"
#include "platform/core/Lists.h"
#include "platform/data/Connection.h"
#include "platform/data/SqlText.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype codesPerQuery = 100;

// A query whose values are bound in the order in which its pieces are written.
class Pieces
{
public:
    Pieces(const ScorteDi &documento, const QStringList &codici)
        : documento_(documento)
        , codici_(codici)
    {
    }

    QString value(const QVariant &value)
    {
        values_.append(value);
        return u"?"_s;
    }
    // Movements of the articles, but not the document's own.
    QString movements(const QString &join = {})
    {
        const QString joined = u" FROM MOVI_MAGA M"_s + join;
        values_ += core::mapped(codici_, data::searchedText);
        values_ << documento_.head.id << documento_.kind->name;
        return joined + u" WHERE UPPER(M.CODICE) IN (%1) AND NOT (COALESCE(M.RIF_DOC_ID, -2) = ? AND "
                        "M.RIF_DOC_TIPO = ?)"_s.arg(QStringList(codici_.size(), data::inCapitals()).join(u", "_s));
    }
    const QVariantList &values() const { return values_; }

private:
    const ScorteDi &documento_;
    const QStringList &codici_;
    QVariantList values_;
};

QString stock(Pieces &pieces, QDate date)
{
    const QString today = pieces.value(core::today());
    const QString quantity = pieces.value(date);
    const QString amount = pieces.value(date);
    return u"SELECT 'S' AS COSA, %1 AS ARTICOLO, "
           "SUM(IIF(M.DATA_MOVIMENTO <= %2, M.QUANTITA, 0)) AS N1, "
           "SUM(IIF(M.DATA_MOVIMENTO <= %3, M.QUANTITA, 0)) AS N2, "
           "SUM(IIF(M.DATA_MOVIMENTO <= %4, M.VALORE_IMPORTO, 0)) AS N3, CAST(NULL AS DATE) AS GIORNO"_s.arg(
               data::withoutIndex(u"UPPER(M.CODICE)"_s), today, quantity, amount) +
           pieces.movements() + u" GROUP BY 2"_s;
}

// The last of the movements, by article.
QString last(const QString &what, const QString &price, const QString &movements)
{
    return u" UNION ALL SELECT '%1', ARTICOLO, PREZZO, 0, 0, GIORNO FROM (SELECT UPPER(M.CODICE) AS ARTICOLO, "
           "M.%2 AS PREZZO, M.DATA_MOVIMENTO AS GIORNO, ROW_NUMBER() OVER (PARTITION BY UPPER(M.CODICE) ORDER BY "
           "M.DATA_MOVIMENTO DESC, M.IDMOVI_MAGA DESC) AS POSTO%3) WHERE POSTO = 1"_s.arg(what, price, movements);
}

QString lastPurchase(Pieces &pieces)
{
    return last(u"A"_s, u"COSTO"_s,
                pieces.movements() + u" AND M.RIF_DOC_TIPO = "_s + data::quoted(bollaCarico().name));
}

QString lastSale(Pieces &pieces, const DocumentKind &kind, const QString &cliente)
{
    const QString customersOnly = &kind == &ddtScarico()
                                      ? u" AND D.TIPO_ANAGRAFICA = %1"_s.arg(static_cast<int>(TTipoAnagrafica::Cliente))
                                      : QString();
    const QString join = u" JOIN %1 D ON D.%2 = M.RIF_DOC_ID AND M.RIF_DOC_TIPO = %3 AND D.CLI_CODICE = "
                         "CAST(%4 AS VARCHAR(255))%5"_s.arg(kind.table, kind.key, data::quoted(kind.name),
                                                            pieces.value(cliente), customersOnly);
    return last(u"V"_s, u"PREZZO"_s, pieces.movements(join));
}

void take(const data::Rows &rows, qsizetype row, Scorta &scorta)
{
    const QString what = rows.text(row, u"COSA").trimmed();
    const QDate day = rows.at(row, u"GIORNO").toDate();
    if (what == u"S") {
        scorta.oggi = rows.number(row, u"N1");
        scorta.allaData = rows.number(row, u"N2");
        scorta.costoMedio = scorta.allaData == 0 ? 0 : std::fabs(rows.number(row, u"N3") / scorta.allaData);
    } else if (what == u"A") {
        scorta.dataAcquisto = day;
        scorta.costoAcquisto = rows.number(row, u"N1");
    } else if (!scorta.dataVendita.isValid() || day > scorta.dataVendita) {
        scorta.dataVendita = day;
        scorta.prezzoVendita = rows.number(row, u"N1");
    }
}

void readGroup(const ScorteDi &documento, const QStringList &codici, QHash<QString, Scorta> &scorte)
{
    Pieces pieces(documento, codici);
    QString sql = stock(pieces, documento.head.data);
    sql += lastPurchase(pieces);
    if (!documento.cliente.isEmpty()) {
        sql += lastSale(pieces, ddtScarico(), documento.cliente);
        if (documento.conFatture)
            sql += lastSale(pieces, fatturaAccompagnatoria(), documento.cliente);
    }
    const data::Rows rows = ModuleConnection().run(sql, pieces.values());
    QHash<QString, Scorta> byCapitals;
    for (qsizetype row = 0; row < rows.size(); ++row)
        take(rows, row, byCapitals[rows.text(row, u"ARTICOLO")]);
    for (const QString &codice : codici)
        scorte.insert(codice, byCapitals.value(data::capitalsOf(codice)));
}

} // namespace

QHash<QString, Scorta> LeggiScorte(const ScorteDi &documento, const QStringList &codici)
{
    QHash<QString, Scorta> scorte;
    for (qsizetype first = 0; first < codici.size(); first += codesPerQuery)
        readGroup(documento, codici.mid(first, codesPerQuery), scorte);
    return scorte;
}

bool ToccaLeGiacenze(const QStringList &tabelle)
{
    QStringList shown = {u"MOVI_MAGA"_s};
    for (const DocumentKind *kind : documentKinds())
        shown.append(kind->table);
    return std::any_of(tabelle.begin(), tabelle.end(),
                       [&shown](const QString &table) { return shown.contains(table); });
}
