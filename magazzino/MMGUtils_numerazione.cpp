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
