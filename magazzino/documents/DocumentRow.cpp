#include "magazzino/documents/DocumentRow.h"

#include <QHash>

RowType DocumentRow::type() const
{
    if (tipo == tipoRiga::articolo)
        return RowType::Articolo;
    if (tipo == tipoRiga::testo)
        return RowType::Testo;
    return tipo == tipoRiga::nonImponibile ? RowType::NonImponibile : RowType::Servizio;
}

DocumentTotals recomputeDocument(QList<DocumentRow> &rows, UnitPrice unitPrice, const VatRateOf &rateOf, bool exempt)
{
    DocumentTotals totals;
    QHash<int, std::optional<double>> rates;
    for (DocumentRow &row : rows) {
        if (row.tipo == tipoRiga::testo)
            continue;
        const double unit = (row.*unitPrice).value_or(0);
        const double net = unit - unit * row.sconto.value_or(0) / 100;
        const double amount = net * row.quantita.value_or(0);
        row.importo = amount;
        if (exempt) {
            totals.esente += amount;
            continue;
        }
        if (row.tipo == tipoRiga::nonImponibile) {
            totals.nonImponibile += amount;
            continue;
        }
        totals.imponibile += amount;
        const int rateKey = row.idAliquotaIVA.value_or(-1);
        if (rateKey > 0 && !rates.contains(rateKey))
            rates.insert(rateKey, rateOf(rateKey));
        // A row whose rate does not exist counts for the base and not for the tax.
        totals.imposta += amount * rates.value(rateKey).value_or(0) / 100;
    }
    return totals;
}
