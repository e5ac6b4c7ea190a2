#include "magazzino/fatturapa/Scrittura.h"

#include "magazzino/fatturapa/Cifre.h"

#include <QXmlStreamWriter>

using namespace Qt::StringLiterals;

// The elements stand in the order of the schema, which counts.
namespace fatturapa {

namespace {

class Scrittore
{
public:
    explicit Scrittore(QByteArray *byte)
        : xml_(byte)
    {
        xml_.setAutoFormatting(true);
        xml_.setAutoFormattingIndent(2);
    }

    void scrivi(const Fattura &fattura)
    {
        const QString spazio = u"http://ivaservizi.agenziaentrate.gov.it/docs/xsd/fatture/v1.2"_s;
        xml_.writeStartDocument();
        xml_.writeNamespace(spazio, u"p"_s);
        xml_.writeStartElement(spazio, u"FatturaElettronica"_s);
        xml_.writeAttribute(u"versione"_s, u"FPR12"_s);
        in(u"FatturaElettronicaHeader"_s, [&] { intestazione(fattura); });
        in(u"FatturaElettronicaBody"_s, [&] { corpo(fattura); });
        xml_.writeEndElement();
        xml_.writeEndDocument();
    }

private:
    template <typename Contenuto>
    void in(const QString &nome, const Contenuto &contenuto)
    {
        xml_.writeStartElement(nome);
        contenuto();
        xml_.writeEndElement();
    }

    void testo(const QString &nome, const QString &valore)
    {
        if (!valore.isEmpty())
            xml_.writeTextElement(nome, valore);
    }

    void centesimi(const QString &nome, qint64 valore) { testo(nome, scrittoCentesimi(valore)); }
    void data(const QString &nome, QDate valore) { testo(nome, valore.toString(Qt::ISODate)); }

    void intestazione(const Fattura &fattura)
    {
        in(u"DatiTrasmissione"_s, [&] {
            codiceIVA(u"IdTrasmittente"_s, u"IT"_s, fattura.trasmittente);
            testo(u"ProgressivoInvio"_s, fattura.progressivo);
            testo(u"FormatoTrasmissione"_s, u"FPR12"_s);
            testo(u"CodiceDestinatario"_s, fattura.codiceDestinatario);
            testo(u"PECDestinatario"_s, fattura.pec);
        });
        in(u"CedentePrestatore"_s, [&] { cedente(fattura.cedente); });
        in(u"CessionarioCommittente"_s, [&] {
            in(u"DatiAnagrafici"_s, [&] { anagrafica(fattura.cessionario); });
            indirizzo(u"Sede"_s, fattura.cessionario.sede);
        });
    }

    void codiceIVA(const QString &nome, const QString &paese, const QString &codice)
    {
        if (codice.isEmpty())
            return;
        in(nome, [&] {
            testo(u"IdPaese"_s, paese);
            testo(u"IdCodice"_s, codice);
        });
    }

    void anagrafica(const Soggetto &soggetto)
    {
        codiceIVA(u"IdFiscaleIVA"_s, soggetto.paese, soggetto.partitaIVA);
        testo(u"CodiceFiscale"_s, soggetto.codiceFiscale);
        in(u"Anagrafica"_s, [&] {
            testo(u"Denominazione"_s, soggetto.denominazione);
            testo(u"Nome"_s, soggetto.nome);
            testo(u"Cognome"_s, soggetto.cognome);
        });
    }

    void indirizzo(const QString &nome, const Indirizzo &indirizzo)
    {
        in(nome, [&] {
            testo(u"Indirizzo"_s, indirizzo.indirizzo);
            testo(u"CAP"_s, indirizzo.cap);
            testo(u"Comune"_s, indirizzo.comune);
            testo(u"Provincia"_s, indirizzo.provincia);
            testo(u"Nazione"_s, indirizzo.nazione);
        });
    }

    void cedente(const Cedente &cedente)
    {
        in(u"DatiAnagrafici"_s, [&] {
            anagrafica(cedente);
            testo(u"RegimeFiscale"_s, cedente.regimeFiscale);
        });
        indirizzo(u"Sede"_s, cedente.sede);
        if (!cedente.reaNumero.isEmpty())
            in(u"IscrizioneREA"_s, [&] {
                testo(u"Ufficio"_s, cedente.reaUfficio);
                testo(u"NumeroREA"_s, cedente.reaNumero);
                if (cedente.capitaleSociale)
                    centesimi(u"CapitaleSociale"_s, *cedente.capitaleSociale);
                testo(u"StatoLiquidazione"_s, cedente.statoLiquidazione);
            });
        if (!cedente.telefono.isEmpty() || !cedente.email.isEmpty())
            in(u"Contatti"_s, [&] {
                testo(u"Telefono"_s, cedente.telefono);
                testo(u"Email"_s, cedente.email);
            });
    }

    void corpo(const Fattura &fattura)
    {
        in(u"DatiGenerali"_s, [&] {
            in(u"DatiGeneraliDocumento"_s, [&] { documento(fattura); });
            in(u"DatiTrasporto"_s, [&] { trasporto(fattura.trasporto); });
        });
        in(u"DatiBeniServizi"_s, [&] {
            for (qsizetype i = 0; i < fattura.righe.size(); ++i)
                in(u"DettaglioLinee"_s, [&] { riga(fattura.righe[i], i + 1); });
            for (const Riepilogo &uno : fattura.riepiloghi)
                in(u"DatiRiepilogo"_s, [&] { riepilogo(uno); });
        });
        if (fattura.pagamento)
            in(u"DatiPagamento"_s, [&] { pagamento(*fattura.pagamento); });
    }

    void documento(const Fattura &fattura)
    {
        testo(u"TipoDocumento"_s, u"TD01"_s);
        testo(u"Divisa"_s, u"EUR"_s);
        data(u"Data"_s, fattura.data);
        testo(u"Numero"_s, fattura.numero);
        if (fattura.bollo)
            in(u"DatiBollo"_s, [&] {
                testo(u"BolloVirtuale"_s, u"SI"_s);
                centesimi(u"ImportoBollo"_s, 200);
            });
        centesimi(u"ImportoTotaleDocumento"_s, fattura.totale);
        if (fattura.arrotondamento != 0)
            centesimi(u"Arrotondamento"_s, fattura.arrotondamento);
        for (const QString &causale : fattura.causali)
            testo(u"Causale"_s, causale);
    }

    void trasporto(const Trasporto &trasporto)
    {
        if (trasporto.vettore)
            in(u"DatiAnagraficiVettore"_s, [&] { anagrafica(*trasporto.vettore); });
        testo(u"MezzoTrasporto"_s, trasporto.mezzo);
        testo(u"CausaleTrasporto"_s, trasporto.causale);
        if (trasporto.colli > 0)
            testo(u"NumeroColli"_s, QString::number(trasporto.colli));
        testo(u"Descrizione"_s, trasporto.aspetto);
        testo(u"UnitaMisuraPeso"_s, trasporto.unitaPeso);
        if (trasporto.peso > 0)
            centesimi(u"PesoLordo"_s, trasporto.peso);
        if (trasporto.ritiro.isValid())
            testo(u"DataOraRitiro"_s, trasporto.ritiro.toString(u"yyyy-MM-ddTHH:mm:ss"_s));
        data(u"DataInizioTrasporto"_s, trasporto.inizio);
        if (trasporto.resa)
            indirizzo(u"IndirizzoResa"_s, *trasporto.resa);
    }

    void riga(const Riga &riga, qsizetype numero)
    {
        testo(u"NumeroLinea"_s, QString::number(numero));
        if (!riga.codice.isEmpty())
            in(u"CodiceArticolo"_s, [&] {
                testo(u"CodiceTipo"_s, u"Interno"_s);
                testo(u"CodiceValore"_s, riga.codice);
            });
        testo(u"Descrizione"_s, riga.descrizione);
        if (riga.quantita) {
            centesimi(u"Quantita"_s, *riga.quantita);
            testo(u"UnitaMisura"_s, riga.um);
        }
        centesimi(u"PrezzoUnitario"_s, riga.prezzo);
        if (riga.sconto != 0)
            in(u"ScontoMaggiorazione"_s, [&] {
                testo(u"Tipo"_s, riga.sconto > 0 ? u"SC"_s : u"MG"_s);
                centesimi(u"Percentuale"_s, qAbs(riga.sconto));
            });
        testo(u"PrezzoTotale"_s, scrittoParti(riga.totale));
        centesimi(u"AliquotaIVA"_s, riga.aliquota);
        testo(u"Natura"_s, riga.natura);
    }

    void riepilogo(const Riepilogo &riepilogo)
    {
        centesimi(u"AliquotaIVA"_s, riepilogo.aliquota);
        testo(u"Natura"_s, riepilogo.natura);
        if (riepilogo.arrotondamento != 0)
            testo(u"Arrotondamento"_s, scrittoParti(riepilogo.arrotondamento));
        centesimi(u"ImponibileImporto"_s, riepilogo.imponibile);
        centesimi(u"Imposta"_s, riepilogo.imposta);
        if (riepilogo.natura.isEmpty())
            testo(u"EsigibilitaIVA"_s, u"I"_s);
        testo(u"RiferimentoNormativo"_s, riepilogo.riferimento);
    }

    void pagamento(const Pagamento &pagamento)
    {
        testo(u"CondizioniPagamento"_s, pagamento.condizioni);
        in(u"DettaglioPagamento"_s, [&] {
            testo(u"ModalitaPagamento"_s, pagamento.modalita);
            data(u"DataScadenzaPagamento"_s, pagamento.scadenza);
            centesimi(u"ImportoPagamento"_s, pagamento.importo);
            testo(u"IBAN"_s, pagamento.iban);
        });
    }

    QXmlStreamWriter xml_;
};

} // namespace

QByteArray scrivi(const Fattura &fattura)
{
    QByteArray byte;
    Scrittore(&byte).scrivi(fattura);
    return byte;
}

} // namespace fatturapa
