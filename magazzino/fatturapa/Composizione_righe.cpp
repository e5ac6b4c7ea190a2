#include "host/InvoiceCodes.h"
#include "magazzino/fatturapa/Cifre.h"
#include "magazzino/fatturapa/Composizione.h"
#include "magazzino/fatturapa/Testi.h"
#include "platform/core/Translation.h"

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace fatturapa {

namespace {

constexpr qsizetype lunghezzaDescrizione = 1000;
const QString grigliaRighe = u"gridRigheFattura"_s;

void trova(Composizione &composizione, int riga, const QString &testo, const QString &codice = {})
{
    composizione.riscontri.append(
        {codice, true, Luogo::Fattura, riga, grigliaRighe, core::tr("Riga %1: ").arg(riga) + testo});
}

// Under N1, N4 and so on the law stands beside the nature; where nobody wrote it, the nature says what it is.
QString riferimentoDi(const QString &natura, const QString &scritto)
{
    if (!scritto.isEmpty())
        return scritto;
    const QList<core::CodeText> &nature = host::vatNatures();
    const auto nota =
        std::find_if(nature.begin(), nature.end(), [&](const core::CodeText &una) { return una.code == natura; });
    return nota == nature.end() ? QString() : nota->text;
}

void assegnaNatura(const QString &natura, const QString &opzione, const QString &nota, Riga &riga,
                   Composizione &composizione)
{
    riga.natura = natura;
    riga.riferimento = riferimentoDi(natura, nota);
    if (!host::hasCode(host::vatNatures(), natura))
        composizione.riscontri.append(
            {natura.isEmpty() ? u"00400"_s : u"00445"_s, true, Luogo::Opzioni, riga.origine, opzione,
             core::tr("Riga %1: la natura \"%2\" scelta nelle opzioni non è ammessa.").arg(riga.origine).arg(natura)});
}

// Nothing of the row's own rate counts in an exempt invoice, and a row outside VAT has none.
void assegnaAliquota(const Dati &dati, const Record &record, Riga &riga, Composizione &composizione)
{
    if (dati.testata.flag(u"IVA_ESENTE"_s)) {
        assegnaNatura(dati.opzioni.naturaEsente, u"FATT_XML_NATURA_ESENTE"_s, dati.opzioni.notaEsente, riga,
                      composizione);
        return;
    }
    if (record.testo(u"TIPO_RIGA"_s) == u"Non imponibile") {
        assegnaNatura(dati.opzioni.naturaNonImponibile, u"FATT_XML_NATURA_NON_IMPONIBILE"_s, {}, riga, composizione);
        return;
    }
    if (record.isNull(u"IVA_IDALIQUOTA_IVA"_s)) {
        trova(composizione, riga.origine, core::tr("manca l'aliquota IVA."), u"00400"_s);
        return;
    }
    riga.aliquota = record.centesimi(u"IVA_ALIQUOTA"_s);
    if (riga.aliquota != 0)
        return;
    const Record aliquota = dati.aliquote.value(record.intero(u"IVA_IDALIQUOTA_IVA"_s));
    riga.natura = aliquota.testo(u"NATURA"_s);
    riga.riferimento = riferimentoDi(riga.natura, aliquota.testo(u"RIFERIMENTO_NORMATIVO"_s));
    if (riga.natura.isEmpty())
        composizione.riscontri.append({u"00400"_s, true, Luogo::AliquotaIVA, riga.origine, u"txtNatura"_s,
                                       core::tr("Riga %1: l'aliquota IVA \"%2\" è a zero e non ha una natura.")
                                           .arg(riga.origine)
                                           .arg(record.testo(u"IVA_CODICE"_s))});
}

// The format asks for a unit beside every quantity. One piece needs no quantity, and what is outside VAT is never given
// a unit here.
void assegnaQuantita(const Record &record, Riga &riga, Composizione &composizione)
{
    constexpr qint64 uno = 100;
    const qint64 quantita = record.centesimi(u"QUANTITA"_s);
    riga.um = ascii(record.testo(u"UM"_s)).left(10);
    if (riga.um.isEmpty() && quantita == uno)
        return;
    if (riga.um.isEmpty())
        riga.um = u"NR"_s;
    riga.quantita = quantita;
    if (quantita < 0)
        trova(composizione, riga.origine, core::tr("la quantità non può essere negativa."));
}

void assegnaImporti(const Record &record, Riga &riga, Composizione &composizione)
{
    riga.prezzo = record.centesimi(u"PREZZO"_s);
    riga.sconto = record.centesimi(u"SCONTO"_s);
    const qint64 quantita = riga.quantita.value_or(100);
    constexpr qint64 tuttoLoSconto = 10'000;
    if (qAbs(riga.sconto) > tuttoLoSconto)
        trova(composizione, riga.origine, core::tr("lo sconto supera il 100 %."));
    const std::optional<qint64> totale = prodotto(riga.prezzo, riga.sconto, quantita);
    constexpr qint64 cifreQuantita = 99'999'999'999'999;
    if (!totale || qAbs(riga.prezzo) > importoMassimo * 100 || quantita > cifreQuantita) {
        trova(composizione, riga.origine, core::tr("prezzo o quantità sono troppo grandi."));
        return;
    }
    riga.totale = *totale;
    const qint64 scritto = record.centesimi(u"IMPORTO"_s);
    if (qAbs(inCentesimi(riga.totale) - scritto) > 1)
        trova(composizione, riga.origine,
              core::tr("l'importo %1 non è prezzo per quantità meno sconto.").arg(scrittoCentesimi(scritto)),
              u"00423"_s);
}

Riga componiRiga(const Dati &dati, const Record &record, int origine, Composizione &composizione)
{
    const QString nome = core::tr("Riga %1").arg(origine);
    const auto testo = [&](const QString &colonna, qsizetype massimo) {
        return scrivibile(record.testo(colonna), massimo, {Luogo::Fattura, grigliaRighe, nome, origine},
                          composizione.riscontri);
    };
    Riga riga;
    riga.origine = origine;
    riga.codice = testo(u"CODICE"_s, 35);
    riga.descrizione = testo(u"DESCRIZIONE"_s, lunghezzaDescrizione);
    if (riga.descrizione.isEmpty())
        riga.descrizione = riga.codice;
    if (riga.descrizione.isEmpty())
        trova(composizione, origine, core::tr("manca la descrizione."));
    assegnaAliquota(dati, record, riga, composizione);
    assegnaQuantita(record, riga, composizione);
    assegnaImporti(record, riga, composizione);
    return riga;
}

// A text row has no amount and no rate, which the format wants of every row: it goes on in the row before it.
void aggiungiTesto(const Record &record, int origine, Composizione &composizione)
{
    Fattura &fattura = composizione.fattura;
    const QString scritto = record.testo(u"DESCRIZIONE"_s);
    const Origine riga = {Luogo::Fattura, grigliaRighe, core::tr("Riga %1").arg(origine), origine};
    QList<Riscontro> trovati;
    const QString testo = scrivibile(scritto, scritto.size() * 4 + 1, riga, trovati);
    const qsizetype posto =
        fattura.righe.isEmpty() ? 0 : lunghezzaDescrizione - fattura.righe.last().descrizione.size() - 1;
    if (testo.size() > posto) {
        aggiungiCausali(scritto, riga, composizione);
        return;
    }
    composizione.riscontri += trovati;
    if (!testo.isEmpty())
        fattura.righe.last().descrizione += u' ' + testo;
}

} // namespace

void componiRighe(const Dati &dati, Composizione &composizione)
{
    for (qsizetype i = 0; i < dati.righe.size(); ++i) {
        const int origine = static_cast<int>(i) + 1;
        if (dati.righe[i].testo(u"TIPO_RIGA"_s) == u"Testo")
            aggiungiTesto(dati.righe[i], origine, composizione);
        else
            composizione.fattura.righe.append(componiRiga(dati, dati.righe[i], origine, composizione));
    }
}

void componiRiepiloghi(const Dati &dati, Composizione &composizione)
{
    Fattura &fattura = composizione.fattura;
    QList<qint64> somme; // of the rows as they are written, beside their summary
    for (const Riga &riga : std::as_const(fattura.righe)) {
        auto riepilogo = std::find_if(fattura.riepiloghi.begin(), fattura.riepiloghi.end(), [&](const Riepilogo &uno) {
            return uno.aliquota == riga.aliquota && uno.natura == riga.natura;
        });
        if (riepilogo == fattura.riepiloghi.end()) {
            fattura.riepiloghi.append({.aliquota = riga.aliquota,
                                       .natura = riga.natura,
                                       .riferimento = scrivibile(riga.riferimento, 100,
                                                                 {Luogo::AliquotaIVA, u"txtRiferimentoNormativo"_s,
                                                                  core::tr("Il riferimento normativo")},
                                                                 composizione.riscontri)});
            somme.append(0);
            riepilogo = fattura.riepiloghi.end() - 1;
        }
        qint64 &somma = somme[riepilogo - fattura.riepiloghi.begin()];
        if (qAbs(somma) > inParti(importoMassimo * 100) - qAbs(riga.totale)) {
            trova(composizione, riga.origine, core::tr("il totale della fattura è troppo grande."));
            return;
        }
        somma += riga.totale;
    }
    qint64 totale = 0;
    for (qsizetype i = 0; i < somme.size(); ++i) {
        Riepilogo &riepilogo = fattura.riepiloghi[i];
        riepilogo.imponibile = inCentesimi(somme[i]);
        riepilogo.arrotondamento = inParti(riepilogo.imponibile) - somme[i];
        riepilogo.imposta = impostaDi(riepilogo.imponibile, riepilogo.aliquota);
        totale += riepilogo.imponibile + riepilogo.imposta;
    }
    // The stored total was summed before anything was rounded; a few cents may be between it and the summaries.
    fattura.totale = dati.testata.centesimi(u"TOTALE_DOCUMENTO"_s);
    fattura.arrotondamento = fattura.totale - totale;
    fattura.bollo = std::accumulate(fattura.riepiloghi.begin(), fattura.riepiloghi.end(), qint64{0},
                                    [](qint64 somma, const Riepilogo &uno) {
                                        const bool soggetto = uno.natura.startsWith(u"N2") || uno.natura == u"N3.5" ||
                                                              uno.natura == u"N3.6" || uno.natura == u"N4";
                                        return soggetto ? somma + uno.imponibile : somma;
                                    }) > 7747;
}

} // namespace fatturapa
