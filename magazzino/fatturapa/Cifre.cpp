#include "magazzino/fatturapa/Cifre.h"

using namespace Qt::StringLiterals;

namespace fatturapa {

namespace {

// Three factors of up to fifteen digits each.
__extension__ using Esteso = __int128;

constexpr qint64 partiPerEuro = 100'000'000;

qint64 divisoArrotondando(Esteso valore, qint64 divisore)
{
    const Esteso mezzo = divisore / 2;
    return static_cast<qint64>((valore < 0 ? valore - mezzo : valore + mezzo) / divisore);
}

QString segno(qint64 valore)
{
    return valore < 0 ? u"-"_s : QString();
}

} // namespace

std::optional<qint64> prodotto(qint64 prezzo, qint64 sconto, qint64 quantita)
{
    constexpr qint64 intero = 10'000; // 100 per cent
    constexpr Esteso massimo = Esteso{importoMassimo} * partiPerEuro;
    const Esteso scontato = Esteso{prezzo} * (intero - sconto);
    // The first product is at most 10^19 times what is allowed, so that the second cannot run over unseen.
    if (scontato > massimo * intero || scontato < -massimo * intero)
        return {};
    const Esteso valore = scontato * quantita;
    if (valore > massimo || valore < -massimo)
        return {};
    return static_cast<qint64>(valore);
}

qint64 inCentesimi(qint64 parti)
{
    return divisoArrotondando(parti, partiPerEuro / 100);
}

qint64 impostaDi(qint64 imponibile, qint64 aliquota)
{
    return divisoArrotondando(Esteso{imponibile} * aliquota, 10'000);
}

QString scrittoCentesimi(qint64 centesimi)
{
    const qint64 valore = qAbs(centesimi);
    return segno(centesimi) + u"%1.%2"_s.arg(valore / 100).arg(valore % 100, 2, 10, QChar(u'0'));
}

QString scrittoParti(qint64 parti)
{
    const qint64 valore = qAbs(parti);
    QString decimali = u"%1"_s.arg(valore % partiPerEuro, 8, 10, QChar(u'0'));
    while (decimali.size() > 2 && decimali.endsWith(u'0'))
        decimali.chop(1);
    return segno(parti) + u"%1.%2"_s.arg(valore / partiPerEuro).arg(decimali);
}

} // namespace fatturapa
