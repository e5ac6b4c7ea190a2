#pragma once
#include <QString>

#include <optional>

/// Exact decimals of the electronic invoice. Amounts with two places are counts of hundredths; row totals, which have
/// up to eight, are counts of hundred-millionths.
namespace fatturapa {

/// The largest amount, in EUR, that is taken: what it counts in hundred-millionths still fits.
inline constexpr qint64 importoMassimo = 90'000'000'000;

/// Price less discount (per cent) times quantity, each in hundredths, exactly: hundred-millionths. Nothing when it is
/// beyond `importoMassimo`.
std::optional<qint64> prodotto(qint64 prezzo, qint64 sconto, qint64 quantita);

/// Hundred-millionths rounded to hundredths, halves away from zero.
qint64 inCentesimi(qint64 parti);
/// The reverse.
inline qint64 inParti(qint64 centesimi)
{
    return centesimi * 1'000'000;
}

/// The tax of a base: `aliquota` is per cent, all three in hundredths, halves away from zero.
qint64 impostaDi(qint64 imponibile, qint64 aliquota);

/// "-1234.50" for hundredths.
QString scrittoCentesimi(qint64 centesimi);
/// "0.12345678" for hundred-millionths: two to eight decimals, as many as are needed.
QString scrittoParti(qint64 parti);

} // namespace fatturapa
