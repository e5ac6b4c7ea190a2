#include "magazzino/fatturapa/Controlli.h"

#include "host/InvoiceCodes.h"
#include "magazzino/fatturapa/Cifre.h"
#include "platform/core/LineText.h"
#include "platform/core/Translation.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace fatturapa {

namespace {

/// What is found, in the order of the checks.
class Controllo
{
public:
    Controllo(const Fattura &fattura, const Dati &dati)
        : fattura_(fattura)
        , dati_(dati)
    {
        documento();
        soggetti();
        for (const Riga &riga : fattura.righe)
            controllaRiga(riga);
        for (const Riepilogo &riepilogo : fattura.riepiloghi)
            controllaRiepilogo(riepilogo);
        totali();
    }

    QList<Riscontro> riscontri;

private:
    void trova(bool sbagliato, const QString &codice, Luogo luogo, const QString &campo, const QString &testo,
               int riga = 0)
    {
        if (sbagliato)
            riscontri.append({codice, true, luogo, riga, campo, testo});
    }

    void documento()
    {
        trova(fattura_.data > dati_.oggi, u"00403"_s, Luogo::Fattura, u"txtData"_s,
              core::tr("La data della fattura è nel futuro."));
        const QDate primaAmmessa(1970, 1, 1);
        trova(!fattura_.data.isValid() || fattura_.data < primaAmmessa, {}, Luogo::Fattura, u"txtData"_s,
              core::tr("La data della fattura manca o è prima del 1970."));
        trova(!fattura_.numero.contains(QRegularExpression(u"[0-9]"_s)), u"00425"_s, Luogo::Fattura, u"txtNumero"_s,
              core::tr("Il numero della fattura deve avere almeno una cifra."));
        trova(fattura_.numero.size() > 20, {}, Luogo::Opzioni, u"FATT_XML_SUFFISSO"_s,
              core::tr("Numero e suffisso della fattura superano 20 caratteri."));
        trova(fattura_.righe.isEmpty(), {}, Luogo::Fattura, u"gridRigheFattura"_s,
              core::tr("La fattura non ha righe con un importo."));
        if (fattura_.pagamento) {
            trova(!host::hasCode(host::paymentMethods(), fattura_.pagamento->modalita), {}, Luogo::TipoPagamento,
                  u"txtModalita"_s, core::tr("La modalità del tipo di pagamento non esiste."));
            trova(!host::hasCode(host::paymentTerms(), fattura_.pagamento->condizioni), {}, Luogo::TipoPagamento,
                  u"txtCondizioni"_s, core::tr("Le condizioni del tipo di pagamento non esistono."));
        }
    }

    void soggetti()
    {
        const Cedente &noi = fattura_.cedente;
        const Soggetto &cliente = fattura_.cessionario;
        trova(cliente.partitaIVA.isEmpty() && cliente.codiceFiscale.isEmpty(), u"00417"_s, Luogo::Cliente,
              u"txtPartitaIVA"_s, core::tr("Il cliente non ha né partita IVA né codice fiscale: ne serve almeno uno."));
        trova(cliente.partitaIVA.size() > 28, {}, Luogo::Cliente, u"txtPartitaIVA"_s,
              core::tr("La partita IVA del cliente è troppo lunga."));
        trova(!core::matches(fattura_.codiceDestinatario, u"[A-Z0-9]{7}"_s), u"00427"_s, Luogo::Cliente,
              u"txtCodiceDestinatario"_s,
              core::tr("Il codice destinatario del cliente deve avere sette lettere o cifre."));
        trova(fattura_.codiceDestinatario == u"XXXXXXX" && cliente.sede.nazione == u"IT", {}, Luogo::Cliente,
              u"txtCodiceDestinatario"_s,
              core::tr("Il codice destinatario XXXXXXX spetta soltanto ai clienti esteri."));
        // A firm's tax code is often its VAT number.
        const QStringList nostri = {noi.partitaIVA, noi.codiceFiscale};
        const bool stessaIVA =
            !cliente.partitaIVA.isEmpty() && cliente.paese == noi.paese && nostri.contains(cliente.partitaIVA);
        const bool stessoCodice = !cliente.codiceFiscale.isEmpty() && nostri.contains(cliente.codiceFiscale);
        trova(stessaIVA || stessoCodice, u"00471"_s, Luogo::Cliente, u"txtPartitaIVA"_s,
              core::tr("Il cliente è l'azienda stessa: una fattura a sé stessi non si può inviare."));
        trova(noi.paese != u"IT" && cliente.paese != u"IT", u"00476"_s, Luogo::Azienda, u"txtPartitaIVA"_s,
              core::tr("Né l'azienda né il cliente hanno una partita IVA italiana."));
    }

    void controllaNatura(qint64 aliquota, const QString &natura, const QString &senza, const QString &conIVA,
                         const QString &dove, int riga)
    {
        // A row without any rate was named before.
        trova(aliquota == 0 && natura.isEmpty(), senza, Luogo::AliquotaIVA, u"txtNatura"_s,
              dove + core::tr("un'aliquota a zero chiede la natura."), riga);
        trova(aliquota != 0 && !natura.isEmpty(), conIVA, Luogo::AliquotaIVA, u"txtNatura"_s,
              dove + core::tr("la natura spetta soltanto alle aliquote a zero."), riga);
        trova(!natura.isEmpty() && !host::hasCode(host::vatNatures(), natura), u"00445"_s, Luogo::AliquotaIVA,
              u"txtNatura"_s, dove + core::tr("la natura %1 non è più ammessa.").arg(natura), riga);
        // Below 1 it is a share: 0,22 for 22 %.
        constexpr qint64 uno = 100;
        constexpr qint64 massima = 10'000;
        trova(aliquota < 0 || (aliquota > 0 && aliquota < uno) || aliquota > massima, u"00424"_s, Luogo::AliquotaIVA,
              u"txtAliquota"_s, dove + core::tr("l'aliquota IVA non è una percentuale."), riga);
    }

    void controllaRiga(const Riga &riga)
    {
        const QString dove = core::tr("Riga %1: ").arg(riga.origine);
        controllaNatura(riga.aliquota, riga.natura, u"00400"_s, u"00401"_s, dove, riga.origine);
        const std::optional<qint64> atteso = prodotto(riga.prezzo, riga.sconto, riga.quantita.value_or(100));
        trova(!atteso || qAbs(*atteso - riga.totale) > inParti(1), u"00423"_s, Luogo::Fattura, u"gridRigheFattura"_s,
              dove + core::tr("il totale non è prezzo per quantità meno sconto."), riga.origine);
        const auto stessa = [&](bool anchePerNatura) {
            return std::any_of(fattura_.riepiloghi.begin(), fattura_.riepiloghi.end(), [&](const Riepilogo &uno) {
                return uno.aliquota == riga.aliquota && (!anchePerNatura || uno.natura == riga.natura);
            });
        };
        trova(fattura_.riepiloghi.isEmpty(), u"00419"_s, Luogo::Fattura, u"gridRigheFattura"_s,
              dove + core::tr("manca il riepilogo delle aliquote."), riga.origine);
        trova(!stessa(false), u"00443"_s, Luogo::Fattura, u"gridRigheFattura"_s,
              dove + core::tr("l'aliquota non è nel riepilogo."), riga.origine);
        trova(stessa(false) && !stessa(true), u"00444"_s, Luogo::Fattura, u"gridRigheFattura"_s,
              dove + core::tr("la natura non è nel riepilogo."), riga.origine);
    }

    void controllaRiepilogo(const Riepilogo &riepilogo)
    {
        const QString dove = core::tr("Riepilogo %1 %: ").arg(scrittoCentesimi(riepilogo.aliquota));
        controllaNatura(riepilogo.aliquota, riepilogo.natura, u"00429"_s, u"00430"_s, dove, 0);
        trova(qAbs(impostaDi(riepilogo.imponibile, riepilogo.aliquota) - riepilogo.imposta) > 1, u"00421"_s,
              Luogo::Fattura, u"gridRigheFattura"_s, dove + core::tr("l'imposta non è quella dell'imponibile."));
        qint64 somma = riepilogo.arrotondamento;
        for (const Riga &riga : fattura_.righe) {
            if (riga.aliquota == riepilogo.aliquota && riga.natura == riepilogo.natura)
                somma += riga.totale;
        }
        constexpr qint64 unEuro = 100;
        trova(qAbs(somma - inParti(riepilogo.imponibile)) > inParti(unEuro), u"00422"_s, Luogo::Fattura,
              u"gridRigheFattura"_s, dove + core::tr("l'imponibile non è la somma delle righe."));
    }

    void totali()
    {
        constexpr qint64 tollerato = 5;
        trova(qAbs(fattura_.arrotondamento) > tollerato, {}, Luogo::Fattura, u"gridRigheFattura"_s,
              core::tr(
                  "Il totale della fattura (%1) differisce di %2 euro da quello delle sue righe: va salvata di nuovo.")
                  .arg(scrittoCentesimi(fattura_.totale), scrittoCentesimi(fattura_.arrotondamento)));
    }

    const Fattura &fattura_;
    const Dati &dati_;
};

} // namespace

QList<Riscontro> controlla(const Fattura &fattura, const Dati &dati)
{
    return Controllo(fattura, dati).riscontri;
}

Composizione esamina(const Dati &dati)
{
    Composizione composizione = componi(dati);
    const QList<Riscontro> gia = composizione.riscontri;
    for (const Riscontro &riscontro : controlla(composizione.fattura, dati)) {
        // The summary of a row without a nature lacks it as well.
        const bool delRiepilogo = riscontro.codice == u"00429" || (riscontro.codice == u"00445" && riscontro.riga == 0);
        const bool detto =
            !riscontro.codice.isEmpty() && std::any_of(gia.begin(), gia.end(), [&](const Riscontro &uno) {
                return delRiepilogo ? uno.codice == u"00400" || uno.codice == u"00445"
                                    : uno.codice == riscontro.codice && uno.riga == riscontro.riga;
            });
        if (!detto)
            composizione.riscontri.append(riscontro);
    }
    return composizione;
}

bool ammette(const QList<Riscontro> &riscontri)
{
    return std::none_of(riscontri.begin(), riscontri.end(), [](const Riscontro &uno) { return uno.blocca; });
}

QString nomeFile(const Fattura &fattura)
{
    return u"IT%1_%2.xml"_s.arg(fattura.trasmittente, fattura.progressivo);
}

QList<Riscontro> controllaFile(const QString &nome, bool usato, qsizetype byte)
{
    constexpr qsizetype massimo = 5'000'000;
    QList<Riscontro> riscontri;
    if (!core::matches(nome, u"IT[A-Z0-9]{11,16}_[A-Za-z0-9]{1,5}[.]xml"_s))
        riscontri.append(blocco(Luogo::Azienda, u"txtPartitaIVA"_s,
                                core::tr("Il nome \"%1\" non è quello di una fattura elettronica.").arg(nome),
                                u"00001"_s));
    if (usato)
        riscontri.append(blocco(Luogo::Fattura, {},
                                core::tr("Un file con il nome \"%1\" è già stato scritto.").arg(nome), u"00002"_s));
    if (byte > massimo)
        riscontri.append(blocco(Luogo::Fattura, u"gridRigheFattura"_s, core::tr("Il file supera 5 MB."), u"00003"_s));
    return riscontri;
}

} // namespace fatturapa
