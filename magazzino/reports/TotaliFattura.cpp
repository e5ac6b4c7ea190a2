#include "magazzino/reports/TotaliFattura.h"

#include "magazzino/documents/DocumentKind.h"
#include "magazzino/fatturapa/Lettura.h"
#include "magazzino/fatturapa/TotaliStampa.h"
#include "magazzino/reports/uMMGdmStampe.h"
#include "platform/core/Decimal.h"
#include "platform/data/DataSet.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using fatturapa::GruppoStampa;
using fatturapa::Record;
using fatturapa::TotaliStampa;

data::Column amount(const QString &name)
{
    return {.name = name, .places = 2, .isNumber = true};
}

// As the stored totals have it: whatever else is in the total is not taxed.
TotaliStampa storedTotals(const Record &header)
{
    const auto total = [&header](const QString &column) { return header.centesimi(column); };
    return {.imponibile = total(u"TOTALE_IMPONIBILE"_s),
            .imposta = total(u"TOTALE_IMPOSTA"_s),
            .altri = total(u"TOTALE_DOCUMENTO"_s) - total(u"TOTALE_IMPONIBILE"_s) - total(u"TOTALE_IMPOSTA"_s)};
}

data::Rows totalsRow(const TotaliStampa &totals)
{
    return {{amount(u"IMPONIBILE"_s), amount(u"IMPOSTA"_s), amount(u"ALTRI"_s), amount(u"ARROTONDAMENTO"_s)},
            {{core::fromHundredths(totals.imponibile), core::fromHundredths(totals.imposta),
              core::fromHundredths(totals.altri), core::fromHundredths(totals.arrotondamento)}}};
}

data::Rows roundingRows(const QList<GruppoStampa> &groups)
{
    QList<QVariantList> rows;
    for (const GruppoStampa &group : groups) {
        if (group.arrotondamento != 0)
            rows.append({group.codice, core::fromHundredths(group.arrotondamento)});
    }
    return {{{.name = u"IVA_CODICE"_s, .isText = true}, amount(u"IMPORTO"_s)}, rows};
}

data::Rows vatRows(data::Rows rows, const QList<GruppoStampa> &groups)
{
    const QList<Record> records = fatturapa::recordDi(rows);
    const int base = rows.indexOf(u"IMPONIBILE");
    const int tax = rows.indexOf(u"IMPOSTA");
    for (qsizetype i = 0; i < records.size(); ++i) {
        const Record &record = records[i];
        const auto group = std::find_if(groups.begin(), groups.end(), [&record](const GruppoStampa &one) {
            return one.codice == record.testo(u"IVA_CODICE"_s) &&
                   one.descrizione == record.testo(u"IVA_DESCRIZIONE"_s) &&
                   one.aliquota == record.centesimi(u"IVA_ALIQUOTA"_s);
        });
        if (group == groups.end())
            continue;
        rows.mutableValues()[i][base] = core::fromHundredths(group->imponibile);
        rows.mutableValues()[i][tax] = core::fromHundredths(group->imposta);
    }
    return rows;
}

} // namespace

void PreparaTotaliStampa(TMMGdmStampe &stampe, const DocumentKind &kind)
{
    if (kind.print.vatQuery.isEmpty())
        return;
    const Record header = fatturapa::recordDi(stampe.query(kind.dataSet()).rows()).value(0);
    const std::optional<TotaliStampa> rounded =
        fatturapa::totaliStampa(header, fatturapa::recordDi(stampe.query(kind.rowsDataSet()).rows()));
    const QString connection = u"ds"_s + kind.dataName;
    stampe.setRows(connection + u"Totali"_s, totalsRow(rounded.value_or(storedTotals(header))));
    stampe.setRows(connection + u"Arrotondamenti"_s, roundingRows(rounded ? rounded->gruppi : QList<GruppoStampa>()));
    const data::Rows vat = stampe.dataConnection(connection + u"Iva"_s).rows();
    stampe.setRows(connection + u"Iva"_s, rounded ? vatRows(vat, rounded->gruppi) : vat);
}
