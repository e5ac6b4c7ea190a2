#include "magazzino/MMGUtils.h"
#include "magazzino/documents/DocumentKind.h"
#include "platform/data/Latest.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString highestNumber(const QString &table, int anno)
{
    return u"SELECT MAX(NUMERO) AS NUMERO FROM %1 WHERE ANNO="_s.arg(table) + QString::number(anno);
}

// One past the highest of all rows; a year without documents gives a null maximum, which reads as 0.
int nextNumber(const QString &sql)
{
    const data::Rows rows = data::latest(ModuleConnection(), sql);
    int highest = 0;
    for (qsizetype row = 0; row < rows.size(); ++row)
        highest = std::max(highest, rows.integer(row, u"NUMERO"));
    return highest + 1;
}

} // namespace

int GetNextNumeroDocumento(const DocumentKind &kind, int anno)
{
    const QString own = highestNumber(kind.table, anno);
    const bool shared = !kind.numbersTable.isEmpty() && NumerazioneUnicaFattura();
    return nextNumber(shared ? highestNumber(kind.numbersTable, anno) + u" UNION "_s + own : own);
}

int GetNextNumeroDdTScarico(int anno)
{
    return GetNextNumeroDocumento(ddtScarico(), anno);
}

int GetNextNumeroBollaCarico(int anno)
{
    return GetNextNumeroDocumento(bollaCarico(), anno);
}

int GetNextNumeroFattAcc(int anno)
{
    return GetNextNumeroDocumento(fatturaAccompagnatoria(), anno);
}

NumeriVicini GetNumeriVicini(const DocumentKind &kind, int numero, QDate data)
{
    const QString nearest = u"(SELECT %1(NUMERO) FROM %2 WHERE ANNO = ? AND NUMERO %3) AS %4"_s;
    const bool shared = !kind.numbersTable.isEmpty() && NumerazioneUnicaFattura();
    const data::Rows rows = data::latest(
        ModuleConnection(),
        u"SELECT "_s +
            QStringList{nearest.arg(u"MAX"_s, kind.table, u"< ?"_s, u"PROPRIO"_s),
                        nearest.arg(u"MAX"_s, shared ? kind.numbersTable : kind.table, u"< ?"_s, u"ALTRUI"_s),
                        nearest.arg(u"MAX"_s, kind.table, u"< ? AND DATA > ?"_s, u"DATATO_DOPO"_s),
                        nearest.arg(u"MIN"_s, kind.table, u"> ? AND DATA < ?"_s, u"DATATO_PRIMA"_s)}
                .join(u", "_s) +
            u" FROM RDB$DATABASE"_s,
        {data.year(), numero, data.year(), numero, data.year(), numero, data, data.year(), numero, data});
    return {.precedente = std::max(rows.integer(0, u"PROPRIO"), rows.integer(0, u"ALTRUI")),
            .datatoDopo = rows.integer(0, u"DATATO_DOPO"),
            .datatoPrima = rows.integer(0, u"DATATO_PRIMA")};
}
