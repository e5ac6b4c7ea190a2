#pragma once
#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

/// What an electronic invoice says, as its file is written: every text as it will stand there, amounts as in Cifre.h.
/// An empty text is an element that is left out.
namespace fatturapa {

struct Indirizzo
{
    QString indirizzo;
    QString cap;
    QString comune;
    QString provincia;
    QString nazione; ///< ISO, two capitals
};

struct Soggetto
{
    QString paese;      ///< of the VAT number
    QString partitaIVA; ///< without the country
    QString codiceFiscale;
    QString denominazione;
    QString nome; ///< a person's, in place of the name above
    QString cognome;
    Indirizzo sede;
};

struct Cedente : Soggetto
{
    QString regimeFiscale;
    QString reaUfficio;
    QString reaNumero;
    std::optional<qint64> capitaleSociale; ///< hundredths
    QString statoLiquidazione;
    QString telefono;
    QString email;
};

struct Trasporto
{
    std::optional<Soggetto> vettore;
    QString mezzo;
    QString causale;
    int colli = 0; ///< 1 to 9999; 0 for none
    QString aspetto;
    QString unitaPeso;
    qint64 peso = 0;  ///< hundredths; 0 for none
    QDateTime ritiro; ///< invalid for none
    QDate inizio;
    std::optional<Indirizzo> resa;
};

struct Riga
{
    int origine = 0; ///< place in the invoice, from 1
    QString codice;
    QString descrizione;
    std::optional<qint64> quantita; ///< hundredths; nothing stands for 1
    QString um;
    qint64 prezzo = 0;   ///< hundredths
    qint64 sconto = 0;   ///< hundredths of a per cent; 0 for none
    qint64 totale = 0;   ///< hundred-millionths
    qint64 aliquota = 0; ///< hundredths of a per cent
    QString natura;
    QString riferimento; ///< of the nature, for the summary
};

struct Riepilogo
{
    qint64 aliquota = 0;
    QString natura;
    qint64 arrotondamento = 0; ///< hundred-millionths
    qint64 imponibile = 0;     ///< hundredths
    qint64 imposta = 0;
    QString riferimento;
};

struct Pagamento
{
    QString condizioni;
    QString modalita;
    QDate scadenza;
    qint64 importo = 0; ///< hundredths
    QString iban;
};

struct Fattura
{
    QString trasmittente; ///< tax code of who sends the file
    QString progressivo;
    QString codiceDestinatario;
    QString pec;
    Cedente cedente;
    Soggetto cessionario;
    QDate data;
    QString numero;
    bool bollo = false;
    qint64 totale = 0;         ///< hundredths, as stored
    qint64 arrotondamento = 0; ///< hundredths, what the summaries lack to the total
    QStringList causali;
    Trasporto trasporto;
    QList<Riga> righe;
    QList<Riepilogo> riepiloghi;
    std::optional<Pagamento> pagamento;
};

/// Where what a finding names is typed.
enum class Luogo
{
    Azienda,
    Cliente,
    Vettore,
    AliquotaIVA,
    TipoPagamento,
    Opzioni,
    Fattura
};

/// One thing that is wrong, or that the file leaves out.
struct Riscontro
{
    QString codice;     ///< of the exchange system, where it has one
    bool blocca = true; ///< no file may be written
    Luogo luogo = Luogo::Fattura;
    int riga = 0;  ///< of the invoice, from 1; 0 for none
    QString campo; ///< name of the control in that form; empty where the row is named
    QString testo; ///< in Italian
};

/// What keeps the file from being written.
inline Riscontro blocco(Luogo luogo, const QString &campo, const QString &testo, const QString &codice = {})
{
    return {.codice = codice, .luogo = luogo, .campo = campo, .testo = testo};
}

/// What should be known before the file goes out.
inline Riscontro avviso(Luogo luogo, const QString &campo, const QString &testo)
{
    return {.blocca = false, .luogo = luogo, .campo = campo, .testo = testo};
}

} // namespace fatturapa
