#pragma once
#include "magazzino/fatturapa/Dati.h"

#include <optional>

/// What the printed invoice sums up: the figures of its electronic one, so that both say the same.
namespace fatturapa {

/// The rows of one VAT code, or those without one. Amounts in hundredths.
struct GruppoStampa
{
    QString codice; ///< empty for rows without a rate
    QString descrizione;
    qint64 aliquota = 0; ///< hundredths of a per cent
    qint64 imponibile = 0;
    qint64 imposta = 0;
    /// What the printed row amounts, each rounded to hundredths, lack to `imponibile`.
    qint64 arrotondamento = 0;
};

struct TotaliStampa
{
    qint64 imponibile = 0;
    qint64 imposta = 0;
    qint64 altri = 0;          ///< exempt, or outside VAT
    qint64 arrotondamento = 0; ///< what the three lack to the stored total
    QList<GruppoStampa> gruppi;
};

/// The sums that the print of an invoice shows; each adds up by hand. Nothing where the stored totals are more than
/// five cents away from the rows: what is stored counts then, and no rounding explains it.
std::optional<TotaliStampa> totaliStampa(const Record &testata, const QList<Record> &righe);

} // namespace fatturapa
