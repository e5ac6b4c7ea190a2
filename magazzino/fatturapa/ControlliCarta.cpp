#include "magazzino/fatturapa/ControlliCarta.h"

#include "host/TaxCodes.h"
#include "platform/core/Translation.h"

using namespace Qt::StringLiterals;

namespace fatturapa {

namespace {

struct Voce
{
    QString colonna;
    QString campo;
    QString testo; ///< %1 is whose it is
};

const QList<Voce> &vociIndirizzo()
{
    static const QList<Voce> voci = {
        {u"RAGIONESOCIALE"_s, u"txtRagioneSociale"_s, core::tr("Manca la ragione sociale %1.")},
        {u"INDIRIZZO"_s, u"txtIndirizzo"_s, core::tr("Manca l'indirizzo %1.")},
        {u"CITTA"_s, u"txtCitta"_s, core::tr("Manca la città %1.")}};
    return voci;
}

void controllaIndirizzo(const Record &record, const QString &prefisso, Luogo luogo, const QString &chi,
                        QList<Riscontro> &riscontri)
{
    for (const Voce &voce : vociIndirizzo()) {
        if (record.testo(prefisso + voce.colonna).isEmpty())
            riscontri.append(blocco(luogo, voce.campo, voce.testo.arg(chi)));
    }
}

void controllaRighe(const QList<Record> &righe, QList<Riscontro> &riscontri)
{
    bool merce = false;
    for (qsizetype i = 0; i < righe.size(); ++i) {
        const int riga = static_cast<int>(i) + 1;
        if (righe[i].testo(u"TIPO_RIGA"_s) == u"Testo")
            continue;
        merce = true;
        const auto trova = [&](const QString &testo) {
            riscontri.append({{}, true, Luogo::Fattura, riga, {}, core::tr("Riga %1: ").arg(riga) + testo});
        };
        if (righe[i].testo(u"DESCRIZIONE"_s).isEmpty())
            trova(core::tr("manca la descrizione."));
        if (righe[i].centesimi(u"QUANTITA"_s) <= 0)
            trova(core::tr("manca la quantità."));
    }
    if (!merce)
        riscontri.append(blocco(Luogo::Fattura, {}, core::tr("Il documento non elenca merci.")));
}

} // namespace

QList<Riscontro> controllaCarta(const Dati &dati)
{
    QList<Riscontro> riscontri;
    controllaIndirizzo(dati.azienda, {}, Luogo::Azienda, core::tr("dell'azienda"), riscontri);
    if (!host::isVatNumber(dati.azienda.testo(u"PARTITAIVA"_s)))
        riscontri.append(
            blocco(Luogo::Azienda, u"txtPartitaIVA"_s, core::tr("La partita IVA dell'azienda manca o è sbagliata.")));
    constexpr int fornitore = 1;
    const bool aFornitore = dati.testata.intero(u"TIPO_ANAGRAFICA"_s) == fornitore;
    const QString chi = aFornitore ? core::tr("del fornitore") : core::tr("del cliente");
    controllaIndirizzo(dati.testata, u"CLI_"_s, Luogo::Cliente, chi, riscontri);
    if (dati.testata.testo(u"CLI_PARTITAIVA"_s).isEmpty() && dati.testata.testo(u"CLI_CODICEFISCALE"_s).isEmpty())
        riscontri.append(blocco(Luogo::Cliente, u"txtPartitaIVA"_s,
                                core::tr("Mancano partita IVA e codice fiscale %1: ne serve almeno uno.").arg(chi)));
    controllaRighe(dati.righe, riscontri);
    return riscontri;
}

} // namespace fatturapa
