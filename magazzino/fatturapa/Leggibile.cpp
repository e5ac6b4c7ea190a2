#include "magazzino/fatturapa/Leggibile.h"

#include <QRegularExpression>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace fatturapa {

namespace {

// "CodiceDestinatario" is "Codice destinatario"; a few names lack their accents or say little.
QString didascalia(const QString &elemento)
{
    static const QHash<QString, QString> particolari = {
        {u"IdPaese"_s, u"Paese"_s},
        {u"IdCodice"_s, u"Numero"_s},
        {u"UnitaMisura"_s, u"Unità di misura"_s},
        {u"UnitaMisuraPeso"_s, u"Unità di misura del peso"_s},
        {u"Quantita"_s, u"Quantità"_s},
        {u"ModalitaPagamento"_s, u"Modalità di pagamento"_s},
        {u"CondizioniPagamento"_s, u"Condizioni di pagamento"_s},
        {u"EsigibilitaIVA"_s, u"Esigibilità IVA"_s},
        {u"IdTrasmittente"_s, u"Trasmittente"_s},
        {u"IdFiscaleIVA"_s, u"Partita IVA"_s},
        {u"DataOraRitiro"_s, u"Data e ora del ritiro"_s},
        {u"DettaglioLinee"_s, u"Riga"_s},
        {u"DatiRiepilogo"_s, u"Riepilogo"_s},
        {u"DettaglioPagamento"_s, u"Rata"_s},
    };
    if (particolari.contains(elemento))
        return particolari.value(elemento);
    static const QRegularExpression confine(u"(?<=[a-z])(?=[A-Z])"_s);
    QStringList parole = elemento.split(confine);
    for (qsizetype i = 1; i < parole.size(); ++i) {
        // "IVA" and "REA" stay as they are.
        if (parole[i].size() < 2 || !parole[i][1].isUpper())
            parole[i] = parole[i].toLower();
    }
    return parole.join(u' ');
}

QString valoreItaliano(QString testo)
{
    static const QRegularExpression data(u"^(\\d{4})-(\\d\\d)-(\\d\\d)(?:T(\\d\\d:\\d\\d).*)?$"_s);
    static const QRegularExpression decimale(u"^-?\\d+\\.\\d+$"_s);
    if (const auto trovata = data.match(testo); trovata.hasMatch())
        return u"%1/%2/%3 %4"_s.arg(trovata.captured(3), trovata.captured(2), trovata.captured(1), trovata.captured(4))
            .trimmed();
    return decimale.match(testo).hasMatch() ? testo.replace(u'.', u',') : testo;
}

/// Puts the elements into rows as they pass. What repeats (rows, summaries) takes one row each.
class Elenco
{
public:
    explicit Elenco(const QByteArray &xml)
        : reader_(xml)
    {
        while (!reader_.atEnd()) {
            if (reader_.readNextStartElement())
                percorso_ = {reader_.name().toString()};
            if (!percorso_.isEmpty())
                leggiElemento();
        }
    }

    QList<QVariantList> righe;

private:
    // Before the first value of a part stands its title.
    void aggiungi(const QString &voce, const QString &valore)
    {
        if (!titoloSezione_.isEmpty())
            righe.append({std::exchange(titoloSezione_, {}), QString(), QString()});
        righe.append({QString(), voce, valore});
    }

    static bool isCompatto(const QString &nome)
    {
        return nome == u"DettaglioLinee" || nome == u"DatiRiepilogo" || nome == u"DettaglioPagamento";
    }

    // Of the element that has just begun, all to its end.
    void leggiElemento()
    {
        QString testo;
        bool contenitore = false;
        while (!reader_.atEnd()) {
            const QXmlStreamReader::TokenType token = reader_.readNext();
            if (token == QXmlStreamReader::EndElement)
                break;
            if (token == QXmlStreamReader::Characters)
                testo += reader_.text();
            if (token != QXmlStreamReader::StartElement)
                continue;
            if (!contenitore)
                apri();
            contenitore = true;
            percorso_.append(reader_.name().toString());
            leggiElemento();
            percorso_.removeLast();
        }
        if (!contenitore)
            scrivi(testo.trimmed());
        else if (isCompatto(percorso_.last()))
            aggiungi(std::exchange(titolo_, {}), std::exchange(parti_, {}).join(u"; "_s));
    }

    void apri()
    {
        const QString &nome = percorso_.last();
        if (isCompatto(nome))
            titolo_ = didascalia(nome) + (nome == u"DettaglioLinee" ? u" %1"_s.arg(++linee_) : QString());
        // The parts of header and body, and what they consist of.
        constexpr qsizetype profondita = 3;
        if (percorso_.size() == profondita)
            titoloSezione_ = parte_ = didascalia(nome);
        else if (percorso_.size() == profondita + 1 && !isCompatto(nome))
            titoloSezione_ = parte_ + u" – "_s + didascalia(nome);
    }

    void scrivi(const QString &testo)
    {
        const QString voce = didascalia(percorso_.last());
        if (!titolo_.isEmpty()) {
            if (percorso_.last() != u"NumeroLinea")
                parti_.append(u"%1: %2"_s.arg(voce, valoreItaliano(testo)));
            return;
        }
        aggiungi(voce, valoreItaliano(testo));
    }

    QXmlStreamReader reader_;
    QStringList percorso_;
    QString titolo_; ///< of the row that is being put together; empty outside of one
    QStringList parti_;
    QString parte_;
    QString titoloSezione_; ///< not yet written
    int linee_ = 0;
};

} // namespace

data::Rows leggibile(const QByteArray &xml)
{
    const QList<data::Column> colonne = {{.name = u"SEZIONE"_s, .isText = true},
                                         {.name = u"VOCE"_s, .isText = true},
                                         {.name = u"VALORE"_s, .isText = true}};
    return {colonne, Elenco(xml).righe};
}

} // namespace fatturapa
