#include "magazzino/fatturapa/Composizione.h"

#include "host/InvoiceCodes.h"
#include "magazzino/fatturapa/Testi.h"
#include "platform/core/Decimal.h"
#include "platform/core/Format.h"
#include "platform/core/LineText.h"
#include "platform/core/Translation.h"

using namespace Qt::StringLiterals;

namespace fatturapa {

namespace {

constexpr qsizetype lunghezzaCausale = 200;

void componiNumero(const Dati &dati, Composizione &composizione)
{
    Fattura &fattura = composizione.fattura;
    fattura.data = dati.testata.data(u"DATA"_s);
    fattura.numero = QString::number(dati.testata.intero(u"NUMERO"_s));
    const auto trova = [&](bool blocca, Luogo luogo, const QString &campo, const QString &testo) {
        composizione.riscontri.append({u"00404"_s, blocca, luogo, 0, campo, testo});
    };
    if (dati.numeroDoppio)
        trova(true, Luogo::Fattura, u"txtNumero"_s,
              core::tr("Un'altra fattura accompagnatoria dello stesso anno ha già il numero %1.").arg(fattura.numero));
    const QString suffisso = dati.opzioni.numerazioneUnica ? QString() : ascii(dati.opzioni.suffisso);
    fattura.numero += suffisso;
    // Digits alone make it a number that another invoice may have.
    if (!suffisso.isEmpty() && !core::matches(suffisso, u"[0-9]+"_s))
        return;
    if (dati.opzioni.numerazioneUnica && dati.numeroInVendita)
        trova(true, Luogo::Fattura, u"txtNumero"_s,
              core::tr("Una fattura di vendita dello stesso anno ha già il numero %1.").arg(fattura.numero));
    else if (!dati.opzioni.numerazioneUnica)
        trova(
            dati.numeroInVendita || !suffisso.isEmpty(), Luogo::Opzioni, u"FATT_XML_SUFFISSO"_s,
            !suffisso.isEmpty()
                ? core::tr("Il suffisso \"%1\" ha soltanto cifre: il numero %2 può essere quello di un'altra fattura.")
                      .arg(suffisso, fattura.numero)
            : dati.numeroInVendita ? core::tr("Una fattura di vendita dello stesso anno ha già il numero %1: serve un "
                                              "suffisso per le fatture accompagnatorie.")
                                         .arg(fattura.numero)
                                   : core::tr("Fatture di vendita e accompagnatorie hanno numeri separati: senza un "
                                              "suffisso due fatture possono avere lo stesso numero."));
}

} // namespace

// Each piece of up to 200 characters is an element of its own; it ends behind a word.
void aggiungiCausali(const QString &testo, const Origine &origine, Composizione &composizione)
{
    QString resto = scrivibile(testo, testo.size() * 4 + 1, origine, composizione.riscontri);
    while (!resto.isEmpty()) {
        qsizetype fine = resto.size();
        if (fine > lunghezzaCausale) {
            fine = resto.lastIndexOf(u' ', lunghezzaCausale);
            if (fine <= 0)
                fine = lunghezzaCausale;
        }
        composizione.fattura.causali.append(resto.left(fine).trimmed());
        resto = resto.mid(fine).trimmed();
    }
}

namespace {

void componiPagamento(const Dati &dati, Composizione &composizione)
{
    const QString modalita = dati.tipoPagamento.testo(u"MODALITA"_s);
    if (modalita.isEmpty()) {
        composizione.riscontri.append(
            avviso(Luogo::TipoPagamento, u"txtModalita"_s,
                   core::tr("Il tipo di pagamento \"%1\" non ha una modalità: il file non dirà come si paga.")
                       .arg(dati.testata.testo(u"TIPO_PAGAMENTO"_s))));
        return;
    }
    const QString condizioni = dati.tipoPagamento.testo(u"CONDIZIONI"_s);
    Pagamento pagamento{.condizioni = condizioni.isEmpty() ? u"TP02"_s : condizioni,
                        .modalita = modalita,
                        .scadenza = dati.testata.data(u"SCADENZA_PAGAMENTO"_s),
                        .importo = composizione.fattura.totale,
                        .iban = {}};
    QString iban = dati.azienda.testo(u"IBAN"_s).toUpper();
    iban.remove(u' ');
    if (modalita == u"MP05" && host::isIban(iban))
        pagamento.iban = iban;
    else if (modalita == u"MP05")
        composizione.riscontri.append(
            avviso(Luogo::Azienda, u"txtIban"_s,
                   core::tr("Si paga con bonifico, ma l'IBAN dell'azienda manca o è sbagliato.")));
    composizione.fattura.pagamento = pagamento;
}

} // namespace

qint64 Record::centesimi(const QString &colonna) const
{
    return core::toHundredths(numero(colonna));
}

// Other programs write flags as numbers.
bool Record::flag(const QString &colonna) const
{
    return core::parseFlag(testo(colonna)).value_or(false);
}

QString scrivibile(const QString &testo, qsizetype massimo, const Origine &origine, QList<Riscontro> &riscontri)
{
    const auto trova = [&](bool blocca, const QString &frase) {
        riscontri.append({{}, blocca, origine.luogo, origine.riga, origine.campo, origine.nome + frase});
    };
    TestoLatino risultato = latino(testo);
    if (risultato.controllo)
        trova(true, core::tr(": ci sono caratteri di controllo, che non si vedono; va riscritto."));
    if (!risultato.rifiutati.isEmpty())
        trova(true, core::tr(": la fattura elettronica non ammette ") + risultato.rifiutati);
    if (risultato.testo.size() > massimo) {
        trova(false, core::tr(": il file ne riporta soltanto i primi %1 caratteri.").arg(massimo));
        risultato.testo = risultato.testo.left(massimo).trimmed();
    }
    return risultato.testo;
}

QString codiceNazione(const QString &nome, const QString &iso)
{
    static const QHash<QString, QString> nomi = {{u""_s, u"IT"_s},
                                                 {u"italia"_s, u"IT"_s},
                                                 {u"germania"_s, u"DE"_s},
                                                 {u"francia"_s, u"FR"_s},
                                                 {u"austria"_s, u"AT"_s},
                                                 {u"svizzera"_s, u"CH"_s},
                                                 {u"spagna"_s, u"ES"_s},
                                                 {u"portogallo"_s, u"PT"_s},
                                                 {u"slovenia"_s, u"SI"_s},
                                                 {u"croazia"_s, u"HR"_s},
                                                 {u"san marino"_s, u"SM"_s},
                                                 {u"belgio"_s, u"BE"_s},
                                                 {u"paesi bassi"_s, u"NL"_s},
                                                 {u"olanda"_s, u"NL"_s},
                                                 {u"regno unito"_s, u"GB"_s},
                                                 {u"polonia"_s, u"PL"_s},
                                                 {u"romania"_s, u"RO"_s},
                                                 {u"grecia"_s, u"GR"_s},
                                                 {u"stati uniti"_s, u"US"_s},
                                                 {u"ungheria"_s, u"HU"_s},
                                                 {u"malta"_s, u"MT"_s},
                                                 {u"repubblica ceca"_s, u"CZ"_s},
                                                 {u"irlanda"_s, u"IE"_s},
                                                 {u"danimarca"_s, u"DK"_s}};
    if (host::isCountryCode(iso.toUpper()))
        return iso.toUpper();
    const QString scritto = nome.trimmed().toLower();
    if (nomi.contains(scritto))
        return nomi.value(scritto);
    return host::isCountryCode(scritto.toUpper()) ? scritto.toUpper() : QString();
}

Composizione componi(const Dati &dati)
{
    Composizione composizione;
    Fattura &fattura = composizione.fattura;
    fattura.progressivo = dati.progressivo;
    componiNumero(dati, composizione);
    componiCedente(dati, composizione);
    componiCessionario(dati, composizione);
    componiRighe(dati, composizione);
    aggiungiCausali(dati.testata.testo(u"NOTE"_s), {Luogo::Fattura, u"txtNote"_s, core::tr("Le note")}, composizione);
    componiRiepiloghi(dati, composizione);
    componiTrasporto(dati, composizione);
    componiPagamento(dati, composizione);
    return composizione;
}

} // namespace fatturapa
