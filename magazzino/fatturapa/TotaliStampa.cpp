#include "magazzino/fatturapa/TotaliStampa.h"

#include "magazzino/fatturapa/Cifre.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace fatturapa {

namespace {

constexpr qint64 tollerato = 5; // hundredths

enum class Genere
{
    ConAliquota,
    SenzaAliquota, // taxable, but nobody said how much
    Altro
};

struct Gruppo
{
    Genere genere = Genere::ConAliquota;
    GruppoStampa stampa;
    qint64 esatto = 0;   // hundred-millionths
    qint64 stampato = 0; // hundredths
};

Genere genereDi(const Record &riga, bool esente)
{
    if (esente || riga.testo(u"TIPO_RIGA"_s) == u"Non imponibile")
        return Genere::Altro;
    return riga.isNull(u"IVA_IDALIQUOTA_IVA"_s) ? Genere::SenzaAliquota : Genere::ConAliquota;
}

// What stands in the invoice counts where it is not the product of what stands beside it.
qint64 importoEsatto(const Record &riga)
{
    const qint64 scritto = riga.centesimi(u"IMPORTO"_s);
    const std::optional<qint64> esatto =
        prodotto(riga.centesimi(u"PREZZO"_s), riga.centesimi(u"SCONTO"_s), riga.centesimi(u"QUANTITA"_s));
    return esatto && qAbs(inCentesimi(*esatto) - scritto) <= 1 ? *esatto : inParti(scritto);
}

QList<Gruppo> gruppiDi(const QList<Record> &righe, bool esente)
{
    QList<Gruppo> gruppi;
    for (const Record &riga : righe) {
        if (riga.testo(u"TIPO_RIGA"_s) == u"Testo")
            continue;
        Gruppo nuovo{.genere = genereDi(riga, esente), .stampa = {}};
        if (nuovo.genere == Genere::ConAliquota)
            nuovo.stampa = {.codice = riga.testo(u"IVA_CODICE"_s),
                            .descrizione = riga.testo(u"IVA_DESCRIZIONE"_s),
                            .aliquota = riga.centesimi(u"IVA_ALIQUOTA"_s)};
        auto gruppo = std::find_if(gruppi.begin(), gruppi.end(), [&](const Gruppo &altro) {
            return altro.genere == nuovo.genere && altro.stampa.codice == nuovo.stampa.codice &&
                   altro.stampa.descrizione == nuovo.stampa.descrizione &&
                   altro.stampa.aliquota == nuovo.stampa.aliquota;
        });
        if (gruppo == gruppi.end()) {
            gruppi.append(nuovo);
            gruppo = gruppi.end() - 1;
        }
        gruppo->esatto += importoEsatto(riga);
        gruppo->stampato += riga.centesimi(u"IMPORTO"_s);
    }
    return gruppi;
}

// The file has one summary of a rate; where several codes share it, the last of them takes what rounding leaves.
void arrotondaPerAliquota(QList<Gruppo> &gruppi)
{
    for (Gruppo &gruppo : gruppi) {
        gruppo.stampa.imponibile = inCentesimi(gruppo.esatto);
        if (gruppo.genere == Genere::ConAliquota)
            gruppo.stampa.imposta = impostaDi(gruppo.stampa.imponibile, gruppo.stampa.aliquota);
    }
    for (auto ultimo = gruppi.begin(); ultimo != gruppi.end(); ++ultimo) {
        const auto pari = [&](const Gruppo &altro) {
            return altro.genere == Genere::ConAliquota && altro.stampa.aliquota == ultimo->stampa.aliquota;
        };
        if (ultimo->stampa.aliquota == 0 || std::any_of(ultimo + 1, gruppi.end(), pari))
            continue;
        qint64 esatto = 0;
        qint64 imponibile = 0;
        qint64 imposta = 0;
        for (const Gruppo &gruppo : std::as_const(gruppi)) {
            if (!pari(gruppo))
                continue;
            esatto += gruppo.esatto;
            imponibile += gruppo.stampa.imponibile;
            imposta += gruppo.stampa.imposta;
        }
        ultimo->stampa.imponibile += inCentesimi(esatto) - imponibile;
        ultimo->stampa.imposta += impostaDi(inCentesimi(esatto), ultimo->stampa.aliquota) - imposta;
    }
}

bool vicino(qint64 uno, qint64 altro)
{
    return qAbs(uno - altro) <= tollerato;
}

} // namespace

std::optional<TotaliStampa> totaliStampa(const Record &testata, const QList<Record> &righe)
{
    QList<Gruppo> gruppi = gruppiDi(righe, testata.flag(u"IVA_ESENTE"_s));
    arrotondaPerAliquota(gruppi);
    TotaliStampa totali;
    for (Gruppo &gruppo : gruppi) {
        gruppo.stampa.arrotondamento = gruppo.stampa.imponibile - gruppo.stampato;
        (gruppo.genere == Genere::Altro ? totali.altri : totali.imponibile) += gruppo.stampa.imponibile;
        totali.imposta += gruppo.stampa.imposta;
        totali.gruppi.append(gruppo.stampa);
    }
    totali.arrotondamento =
        testata.centesimi(u"TOTALE_DOCUMENTO"_s) - totali.imponibile - totali.imposta - totali.altri;
    if (!vicino(totali.arrotondamento, 0) || !vicino(totali.imponibile, testata.centesimi(u"TOTALE_IMPONIBILE"_s)) ||
        !vicino(totali.imposta, testata.centesimi(u"TOTALE_IMPOSTA"_s)))
        return {};
    return totali;
}

} // namespace fatturapa
