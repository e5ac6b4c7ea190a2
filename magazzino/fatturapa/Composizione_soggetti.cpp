#include "host/InvoiceCodes.h"
#include "host/TaxCodes.h"
#include "magazzino/fatturapa/Composizione.h"
#include "magazzino/fatturapa/Testi.h"
#include "platform/core/LineText.h"
#include "platform/core/Translation.h"

using namespace Qt::StringLiterals;

namespace fatturapa {

namespace {

constexpr qsizetype lunghezzaNome = 80;
constexpr qsizetype lunghezzaPersona = 60;
constexpr qsizetype lunghezzaLuogo = 60;

QString compatto(const QString &testo)
{
    QString lettere = testo.toUpper();
    return lettere.remove(u' ');
}

/// The address of a firm, whose columns begin with `prefisso`; `chi` is "dell'azienda".
struct Sede
{
    Luogo luogo;
    QString prefisso;
    QString chi;
};

Indirizzo indirizzoDi(const Record &record, const Sede &sede, const QString &nazione, QList<Riscontro> &riscontri)
{
    const auto parte = [&](const QString &colonna, const QString &campo, const QString &nome) {
        return scrivibile(record.testo(sede.prefisso + colonna), lunghezzaLuogo, {sede.luogo, campo, nome}, riscontri);
    };
    Indirizzo indirizzo{.indirizzo = parte(u"INDIRIZZO"_s, u"txtIndirizzo"_s, core::tr("L'indirizzo ") + sede.chi),
                        .cap = u"00000"_s,
                        .comune = parte(u"CITTA"_s, u"txtCitta"_s, core::tr("La città ") + sede.chi),
                        .provincia = {},
                        .nazione = nazione};
    if (nazione != u"IT")
        return indirizzo;
    indirizzo.cap = compatto(record.testo(sede.prefisso + u"CAP"_s));
    const QString provincia = compatto(record.testo(sede.prefisso + u"PROVINCIA"_s));
    if (host::isProvinceCode(provincia))
        indirizzo.provincia = provincia;
    return indirizzo;
}

void controllaIndirizzo(const Indirizzo &indirizzo, const Sede &sede, QList<Riscontro> &riscontri)
{
    const auto manca = [&](const QString &campo, const QString &testo) {
        riscontri.append(blocco(sede.luogo, campo, testo.arg(sede.chi)));
    };
    if (indirizzo.indirizzo.isEmpty())
        manca(u"txtIndirizzo"_s, core::tr("Manca l'indirizzo %1."));
    if (indirizzo.comune.isEmpty())
        manca(u"txtCitta"_s, core::tr("Manca la città %1."));
    if (!core::matches(indirizzo.cap, u"[0-9]{5}"_s))
        manca(u"txtCap"_s, core::tr("Il CAP %1 deve avere cinque cifre."));
    if (indirizzo.nazione.isEmpty())
        manca(sede.luogo == Luogo::Cliente ? u"txtNazioneIso"_s : u"txtNazione"_s,
              core::tr("La nazione %1 non è riconosciuta: serve il codice di due lettere."));
}

// The number and its country: "IT", or the two letters that stand before it.
void assegnaPartitaIVA(Soggetto &soggetto, const QString &scritta, const QString &nazione)
{
    QString numero = compatto(scritta);
    soggetto.paese = nazione.isEmpty() ? u"IT"_s : nazione;
    // Greek numbers begin with EL.
    const QString lettere = numero.left(2) == u"EL" ? u"GR"_s : numero.left(2);
    if (numero.size() > 2 && host::isCountryCode(lettere)) {
        soggetto.paese = lettere;
        numero.remove(0, 2);
    }
    soggetto.partitaIVA = ascii(numero);
}

QString telefono(const QString &scritto)
{
    QString cifre;
    for (const QChar carattere : scritto) {
        if (carattere.unicode() < 128 && (carattere.isDigit() || (carattere == u'+' && cifre.isEmpty())))
            cifre += carattere;
    }
    constexpr qsizetype minimo = 5;
    constexpr qsizetype massimo = 12;
    return cifre.size() >= minimo && cifre.size() <= massimo ? cifre : QString();
}

// What the register of companies asks for: all of it, or nothing.
void componiRea(const Dati &dati, Composizione &composizione)
{
    Cedente &cedente = composizione.fattura.cedente;
    cedente.reaUfficio = compatto(dati.azienda.testo(u"REAUFFICIO"_s));
    cedente.reaNumero = ascii(dati.azienda.testo(u"REANUMERO"_s));
    cedente.statoLiquidazione = dati.azienda.testo(u"STATOLIQUIDAZIONE"_s);
    if (cedente.reaNumero.isEmpty() && cedente.reaUfficio.isEmpty())
        return;
    const auto trova = [&](bool manca, const QString &campo, const QString &testo) {
        if (manca)
            composizione.riscontri.append(blocco(Luogo::Azienda, campo, testo));
    };
    trova(!host::isProvinceCode(cedente.reaUfficio), u"txtReaUfficio"_s,
          core::tr("L'ufficio REA dell'azienda si scrive con le due lettere della provincia."));
    trova(cedente.reaNumero.isEmpty(), u"txtReaNumero"_s, core::tr("Manca il numero REA dell'azienda."));
    trova(!host::hasCode(host::liquidationStates(), cedente.statoLiquidazione), u"txtStatoLiquidazione"_s,
          core::tr("Per l'iscrizione REA serve lo stato di liquidazione dell'azienda."));
    if (const qint64 capitale = dati.azienda.centesimi(u"CAPITALESOCIALE"_s); capitale > 0)
        cedente.capitaleSociale = capitale;
}

void componiDestinatario(const Dati &dati, Composizione &composizione)
{
    Fattura &fattura = composizione.fattura;
    const QString ignoto = u"0000000"_s;
    fattura.codiceDestinatario = compatto(dati.cliente.testo(u"CODICEDESTINATARIO"_s));
    if (!fattura.codiceDestinatario.isEmpty() && fattura.codiceDestinatario != ignoto)
        return;
    fattura.codiceDestinatario = fattura.cessionario.sede.nazione == u"IT" ? ignoto : u"XXXXXXX"_s;
    if (fattura.codiceDestinatario != ignoto)
        return;
    fattura.pec = dati.cliente.testo(u"PEC"_s);
    if (!fattura.pec.isEmpty() && !host::isMailAddress(fattura.pec))
        composizione.riscontri.append(
            blocco(Luogo::Cliente, u"txtPec"_s, core::tr("La PEC del cliente non è un indirizzo di posta.")));
    else if (fattura.pec.isEmpty())
        composizione.riscontri.append(avviso(Luogo::Cliente, u"txtCodiceDestinatario"_s,
                                             core::tr("Il cliente non ha né codice destinatario né PEC: troverà la "
                                                      "fattura soltanto nella sua area riservata, e va avvisato.")));
}

// Under the name that the invoice keeps, or a person's two names from the register.
void componiNome(const Dati &dati, Composizione &composizione)
{
    Soggetto &cessionario = composizione.fattura.cessionario;
    const auto nome = [&](const QString &testo, qsizetype massimo, const QString &campo, const QString &chiamato) {
        return scrivibile(testo, massimo, {Luogo::Cliente, campo, chiamato}, composizione.riscontri);
    };
    cessionario.cognome = nome(dati.cliente.testo(u"COGNOMEPERSONA"_s), lunghezzaPersona, u"txtCognomePersona"_s,
                               core::tr("Il cognome del cliente"));
    cessionario.nome = nome(dati.cliente.testo(u"NOMEPERSONA"_s), lunghezzaPersona, u"txtNomePersona"_s,
                            core::tr("Il nome del cliente"));
    if (!cessionario.cognome.isEmpty() && !cessionario.nome.isEmpty())
        return;
    cessionario.cognome.clear();
    cessionario.nome.clear();
    cessionario.denominazione = nome(dati.testata.testo(u"CLI_RAGIONESOCIALE"_s), lunghezzaNome, u"txtRagioneSociale"_s,
                                     core::tr("La ragione sociale del cliente"));
    if (cessionario.denominazione.isEmpty())
        composizione.riscontri.append(
            blocco(Luogo::Cliente, u"txtRagioneSociale"_s, core::tr("Manca la ragione sociale del cliente.")));
}

void controllaCodici(const Dati &dati, Composizione &composizione)
{
    const Soggetto &cessionario = composizione.fattura.cessionario;
    const auto trova = [&](const QString &codice, const QString &campo, const QString &testo) {
        composizione.riscontri.append(blocco(Luogo::Cliente, campo, testo, codice));
    };
    if (dati.cliente.isEmpty())
        composizione.riscontri.append(
            avviso(Luogo::Fattura, u"cmdSelezionaCliente"_s,
                   core::tr("Il cliente \"%1\" non è più in anagrafica: codice destinatario e PEC mancano.")
                       .arg(dati.testata.testo(u"CLI_CODICE"_s))));
    if (cessionario.partitaIVA.isEmpty() && cessionario.codiceFiscale.isEmpty())
        trova(u"00417"_s, u"txtPartitaIVA"_s,
              core::tr("Il cliente non ha né partita IVA né codice fiscale: ne serve almeno uno."));
    if (cessionario.paese == u"IT" && !cessionario.partitaIVA.isEmpty() && !host::isVatNumber(cessionario.partitaIVA))
        trova(u"00305"_s, u"txtPartitaIVA"_s, core::tr("La partita IVA del cliente è sbagliata."));
    if (!cessionario.codiceFiscale.isEmpty() && !host::isTaxCode(cessionario.codiceFiscale))
        trova(u"00306"_s, u"txtCodiceFiscale"_s, core::tr("Il codice fiscale del cliente è sbagliato."));
}

} // namespace

void componiCedente(const Dati &dati, Composizione &composizione)
{
    Cedente &cedente = composizione.fattura.cedente;
    QList<Riscontro> &riscontri = composizione.riscontri;
    assegnaPartitaIVA(cedente, dati.azienda.testo(u"PARTITAIVA"_s), u"IT"_s);
    cedente.codiceFiscale = ascii(compatto(dati.azienda.testo(u"CODICEFISCALE"_s)));
    cedente.denominazione =
        scrivibile(dati.azienda.testo(u"RAGIONESOCIALE"_s), lunghezzaNome,
                   {Luogo::Azienda, u"txtRagioneSociale"_s, core::tr("La ragione sociale dell'azienda")}, riscontri);
    const auto trova = [&](bool manca, const QString &codice, const QString &campo, const QString &testo) {
        if (manca)
            riscontri.append(blocco(Luogo::Azienda, campo, testo, codice));
    };
    trova(cedente.denominazione.isEmpty(), {}, u"txtRagioneSociale"_s,
          core::tr("Manca la ragione sociale dell'azienda."));
    trova(cedente.paese != u"IT" || !host::isVatNumber(cedente.partitaIVA), u"00301"_s, u"txtPartitaIVA"_s,
          core::tr("La partita IVA dell'azienda manca o è sbagliata."));
    trova(!cedente.codiceFiscale.isEmpty() && !host::isTaxCode(cedente.codiceFiscale), u"00302"_s,
          u"txtCodiceFiscale"_s, core::tr("Il codice fiscale dell'azienda è sbagliato."));
    composizione.fattura.trasmittente = cedente.codiceFiscale.isEmpty() ? cedente.partitaIVA : cedente.codiceFiscale;
    cedente.regimeFiscale = dati.azienda.testo(u"REGIMEFISCALE"_s);
    trova(!host::hasCode(host::taxRegimes(), cedente.regimeFiscale), {}, u"txtRegimeFiscale"_s,
          core::tr("Manca il regime fiscale dell'azienda."));
    const Sede sede = {Luogo::Azienda, {}, core::tr("dell'azienda")};
    cedente.sede = indirizzoDi(dati.azienda, sede, codiceNazione(dati.azienda.testo(u"NAZIONE"_s), {}), riscontri);
    controllaIndirizzo(cedente.sede, sede, riscontri);
    componiRea(dati, composizione);
    cedente.telefono = telefono(dati.azienda.testo(u"TELEFONO"_s));
    if (const QString email = dati.azienda.testo(u"EMAIL"_s); host::isMailAddress(email))
        cedente.email = email;
}

namespace {

// The invoice keeps what the customer's record said when the customer was chosen: where that record says something else
// by now, it is the invoice that has to be mended, by choosing again.
void rimandaAllaFattura(const Dati &dati, QList<Riscontro> &riscontri, qsizetype dal)
{
    static const QHash<QString, QString> colonne = {{u"txtRagioneSociale"_s, u"RAGIONESOCIALE"_s},
                                                    {u"txtIndirizzo"_s, u"INDIRIZZO"_s},
                                                    {u"txtCitta"_s, u"CITTA"_s},
                                                    {u"txtCap"_s, u"CAP"_s},
                                                    {u"txtPartitaIVA"_s, u"PARTITAIVA"_s},
                                                    {u"txtCodiceFiscale"_s, u"CODICEFISCALE"_s}};
    for (qsizetype i = dal; i < riscontri.size(); ++i) {
        Riscontro &riscontro = riscontri[i];
        const QString colonna = colonne.value(riscontro.campo);
        if (riscontro.luogo != Luogo::Cliente || colonna.isEmpty() || dati.cliente.isEmpty())
            continue;
        if (dati.cliente.testo(colonna) == dati.testata.testo(u"CLI_"_s + colonna)) {
            riscontro.testo += core::tr(" Dopo averlo corretto, il cliente va scelto di nuovo nella fattura.");
            continue;
        }
        riscontro.luogo = Luogo::Fattura;
        riscontro.campo = u"cmdSelezionaCliente"_s;
        riscontro.testo += core::tr(" La sua scheda dice altro: va scelto di nuovo nella fattura.");
    }
}

} // namespace

void componiCessionario(const Dati &dati, Composizione &composizione)
{
    Soggetto &cessionario = composizione.fattura.cessionario;
    const qsizetype dal = composizione.riscontri.size();
    componiNome(dati, composizione);
    // The register's code counts while it names the country that the invoice was written for.
    const QString nazione = dati.testata.testo(u"CLI_NAZIONE"_s);
    const bool comeInAnagrafica = nazione.compare(dati.cliente.testo(u"NAZIONE"_s), Qt::CaseInsensitive) == 0;
    const QString iso = codiceNazione(nazione, comeInAnagrafica ? dati.cliente.testo(u"NAZIONEISO"_s) : QString());
    const Sede sede = {Luogo::Cliente, u"CLI_"_s, core::tr("del cliente")};
    cessionario.sede = indirizzoDi(dati.testata, sede, iso, composizione.riscontri);
    controllaIndirizzo(cessionario.sede, sede, composizione.riscontri);
    assegnaPartitaIVA(cessionario, dati.testata.testo(u"CLI_PARTITAIVA"_s), iso);
    // Only Italy's are tax codes to the exchange system.
    if (iso == u"IT")
        cessionario.codiceFiscale = ascii(compatto(dati.testata.testo(u"CLI_CODICEFISCALE"_s)));
    controllaCodici(dati, composizione);
    rimandaAllaFattura(dati, composizione.riscontri, dal);
    componiDestinatario(dati, composizione);
}

void componiTrasporto(const Dati &dati, Composizione &composizione)
{
    const Record &testata = dati.testata;
    Trasporto &trasporto = composizione.fattura.trasporto;
    QList<Riscontro> &riscontri = composizione.riscontri;
    const auto avvisa = [&](Luogo luogo, const QString &campo, const QString &testo) {
        riscontri.append(avviso(luogo, campo, testo));
    };
    const auto parte = [&](const QString &colonna, qsizetype massimo, const QString &campo, const QString &nome) {
        return scrivibile(testata.testo(colonna), massimo, {Luogo::Fattura, campo, nome}, riscontri);
    };
    if (const QString nome = testata.testo(u"VETT_RAGIONESOCIALE"_s); !nome.isEmpty()) {
        Soggetto vettore;
        const QString nazione = codiceNazione(testata.testo(u"VETT_NAZIONE"_s), {});
        assegnaPartitaIVA(vettore, dati.vettore.testo(u"PARTITAIVA"_s), nazione);
        vettore.denominazione = scrivibile(
            nome, lunghezzaNome, {Luogo::Vettore, u"txtRagioneSociale"_s, core::tr("Il nome del vettore")}, riscontri);
        const bool giusta = !vettore.partitaIVA.isEmpty() && vettore.partitaIVA.size() <= 28 &&
                            (vettore.paese != u"IT" || host::isVatNumber(vettore.partitaIVA));
        if (giusta && !vettore.denominazione.isEmpty())
            trasporto.vettore = vettore;
        else
            avvisa(Luogo::Vettore, u"txtPartitaIVA"_s,
                   core::tr("La partita IVA del vettore manca o è sbagliata: il file non riporta il vettore."));
    }
    trasporto.mezzo = parte(u"TIPO_TRASPORTO"_s, 80, u"txtTipoTrasporto"_s, core::tr("Il tipo di trasporto"));
    trasporto.causale =
        parte(u"CAUSALE_TRASPORTO"_s, 100, u"txtCausaleTrasporto"_s, core::tr("La causale del trasporto"));
    trasporto.aspetto = parte(u"ASPETTO_BENI"_s, 100, u"txtAspettoBeni"_s, core::tr("L'aspetto dei beni"));
    const int colli = testata.intero(u"COLLI"_s);
    if (colli >= 1 && colli <= 9999)
        trasporto.colli = colli;
    else if (colli != 0)
        avvisa(Luogo::Fattura, u"txtColli"_s, core::tr("I colli sono più di 9999: il file non li riporta."));
    constexpr qint64 pesoMassimo = 999'999;
    const qint64 peso = testata.centesimi(u"PESO"_s);
    if (peso > 0 && peso <= pesoMassimo) {
        trasporto.peso = peso;
        trasporto.unitaPeso = ascii(testata.testo(u"PESO_UM"_s)).left(10);
    } else if (peso != 0) {
        avvisa(Luogo::Fattura, u"txtPeso"_s, core::tr("Il peso supera 9999,99: il file non lo riporta."));
    }
    trasporto.inizio = testata.data(u"DATA_INIZIO_TRASPORTO"_s);
    if (trasporto.inizio.isValid() && testata.ora(u"ORA_INIZIO_TRASPORTO"_s).isValid())
        trasporto.ritiro = QDateTime(trasporto.inizio, testata.ora(u"ORA_INIZIO_TRASPORTO"_s));
    if (testata.testo(u"DEST_INDIRIZZO"_s).isEmpty() && testata.testo(u"DEST_CITTA"_s).isEmpty())
        return;
    const Sede sede = {Luogo::Fattura, u"DEST_"_s, core::tr("della destinazione")};
    const Indirizzo resa = indirizzoDi(testata, sede, codiceNazione(testata.testo(u"DEST_NAZIONE"_s), {}), riscontri);
    QList<Riscontro> mancanti;
    controllaIndirizzo(resa, sede, mancanti);
    if (mancanti.isEmpty())
        trasporto.resa = resa;
    else
        avvisa(
            Luogo::Fattura, u"txtDestIndirizzo"_s,
            core::tr(
                "La destinazione non è completa (servono indirizzo, CAP, città e nazione): il file non la riporta."));
}

} // namespace fatturapa
