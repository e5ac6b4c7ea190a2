#include "magazzino/fatturapa/Ricevute.h"

#include "magazzino/fatturapa/Registro.h"
#include "platform/core/Clock.h"
#include "platform/core/Error.h"
#include "platform/core/Translation.h"

#include <QHash>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace fatturapa {

namespace {

struct TipoRicevuta
{
    QString codice;
    QString stato; ///< of the file after it
};

// By the name of the root element; public offices and firms get some of them under different names.
const QHash<QString, TipoRicevuta> tipi = {
    {u"RicevutaConsegna"_s, {u"RC"_s, stato::consegnata}},
    {u"NotificaScarto"_s, {u"NS"_s, stato::scartata}},
    {u"RicevutaScarto"_s, {u"NS"_s, stato::scartata}},
    {u"NotificaMancataConsegna"_s, {u"MC"_s, stato::nonConsegnata}},
    {u"RicevutaImpossibilitaRecapito"_s, {u"MC"_s, stato::nonConsegnata}},
    {u"NotificaDecorrenzaTermini"_s, {u"DT"_s, stato::consegnata}},
    {u"AttestazioneTrasmissioneFattura"_s, {u"AT"_s, stato::nonConsegnata}},
};

QString statoDopo(const QString &tipo)
{
    for (const TipoRicevuta &uno : tipi) {
        if (uno.codice == tipo)
            return uno.stato;
    }
    return {};
}

// Receipts may be read in any order: a later stage is never taken back.
bool precede(const QString &prima, const QString &dopo)
{
    static const QStringList ordine = {stato::scritta, stato::inviata, stato::nonConsegnata, stato::consegnata,
                                       stato::scartata};
    return ordine.indexOf(prima) < ordine.indexOf(dopo);
}

/// Takes the texts that count from the elements as they pass.
class Lettore
{
public:
    explicit Lettore(const QByteArray &xml)
        : reader_(xml)
    {
        while (!reader_.atEnd())
            prendi(reader_.readNext());
        if (reader_.hasError())
            throw core::Error(core::tr("Il file XML non è leggibile: è incompleto o danneggiato."),
                              reader_.errorString());
        if (ricevuta.nomeFile.isEmpty())
            throw core::Error(core::tr("La ricevuta non dice di quale file parla."));
    }

    Ricevuta ricevuta;

private:
    void prendi(QXmlStreamReader::TokenType token)
    {
        switch (token) {
        case QXmlStreamReader::DTD:
            // Nobody sends one, and what it defines could fill the memory.
            throw core::Error(core::tr("Il file contiene una definizione di tipo (DTD): non è una ricevuta."));
        case QXmlStreamReader::StartElement:
            percorso_.append(reader_.name().toString());
            testo_.clear();
            if (percorso_.size() == 1)
                prendiRadice();
            if (percorso_.last() == u"Errore")
                ricevuta.errori.append(ErroreRicevuta());
            break;
        case QXmlStreamReader::Characters:
            testo_ += reader_.text();
            break;
        case QXmlStreamReader::EndElement:
            prendiTesto(testo_.simplified());
            percorso_.removeLast();
            testo_.clear();
            break;
        default:
            break;
        }
    }

    void prendiRadice()
    {
        ricevuta.tipo = tipi.value(percorso_.first()).codice;
        if (ricevuta.tipo.isEmpty())
            throw core::Error(core::tr("Il file non è una ricevuta del Sistema di Interscambio."));
    }

    void prendiTesto(const QString &testo)
    {
        const QString nome = percorso_.last();
        const QString sopra = percorso_.value(percorso_.size() - 2);
        if (sopra == u"Errore" && !ricevuta.errori.isEmpty()) {
            ErroreRicevuta &errore = ricevuta.errori.last();
            if (nome == u"Codice")
                errore.codice = testo;
            else if (nome == u"Descrizione" || nome == u"Suggerimento")
                errore.descrizione += (errore.descrizione.isEmpty() ? QString() : u" "_s) + testo;
        }
        if (percorso_.size() != 2)
            return;
        if (nome == u"NomeFile")
            ricevuta.nomeFile = testo;
        else if (nome == u"DataOraConsegna" || (nome == u"DataOraRicezione" && !ricevuta.momento.isValid()))
            ricevuta.momento = QDateTime::fromString(testo, Qt::ISODateWithMs).toLocalTime();
        else if (nome == u"Descrizione" || (nome == u"Note" && ricevuta.tipo == u"NS"))
            ricevuta.errori.append({ricevuta.tipo, testo});
    }

    QXmlStreamReader reader_;
    QStringList percorso_;
    QString testo_;
};

// A signed invoice is named with its signature.
QString nomeSenzaFirma(QString nome)
{
    if (nome.endsWith(u".p7m"_s, Qt::CaseInsensitive))
        nome.chop(4);
    return nome;
}

void inserisci(data::Connection &connection, int file, const Ricevuta &ricevuta, const QByteArray &xml,
               const QString &nome, const QString &utente)
{
    constexpr qsizetype massimo = 100;
    const QDateTime adesso = core::now();
    connection.run(u"INSERT INTO RICEVUTE_FATT_EL(IDFATTURA_ELETTRONICA, TIPO, NOME, IMPRONTA, MOMENTO, LETTA_IL, "
                   "UTENTE, CONTENUTO) VALUES(?, ?, ?, ?, ?, ?, ?, ?)"_s,
                   {file, ricevuta.tipo, nome.left(massimo), improntaDi(xml),
                    ricevuta.momento.isValid() ? ricevuta.momento : adesso, adesso, utente, xml});
}

} // namespace

Ricevuta leggiRicevuta(const QByteArray &xml)
{
    return Lettore(xml).ricevuta;
}

RicevutaRegistrata registraRicevuta(data::Connection &connection, const QByteArray &xml, const QString &nome,
                                    const QString &utente)
{
    RicevutaRegistrata letta{.ricevuta = leggiRicevuta(xml)};
    data::Transaction transaction(connection);
    if (connection.finds(u"SELECT TIPO FROM RICEVUTE_FATT_EL WHERE IMPRONTA = ?"_s, {improntaDi(xml)})) {
        letta.esito = RicevutaRegistrata::Esito::GiaLetta;
        return letta;
    }
    const data::Rows file =
        connection.run(u"SELECT IDFATTURA_ELETTRONICA, STATO FROM FATTURE_ELETTRONICHE WHERE UPPER(NOME) = UPPER(?)"_s,
                       {nomeSenzaFirma(letta.ricevuta.nomeFile)});
    if (file.isEmpty()) {
        letta.esito = RicevutaRegistrata::Esito::FileSconosciuto;
        return letta;
    }
    const int id = file.integer(0, u"IDFATTURA_ELETTRONICA");
    inserisci(connection, id, letta.ricevuta, xml, nome, utente);
    const QString prima = file.text(0, u"STATO");
    const QString dopo = statoDopo(letta.ricevuta.tipo);
    if (precede(prima, dopo))
        spostaStato(connection, id, prima, dopo,
                    letta.ricevuta.momento.isValid() ? letta.ricevuta.momento : core::now());
    transaction.commit();
    return letta;
}

QList<Ricevuta> ricevuteDi(data::Connection &connection, int file)
{
    const data::Rows rows = connection.run(u"SELECT CONTENUTO FROM RICEVUTE_FATT_EL WHERE IDFATTURA_ELETTRONICA = ? "
                                           "ORDER BY IDRICEVUTA_FATT_EL"_s,
                                           {file});
    QList<Ricevuta> tutte;
    for (qsizetype riga = 0; riga < rows.size(); ++riga)
        tutte.append(leggiRicevuta(rows.at(riga, u"CONTENUTO").toByteArray()));
    return tutte;
}

} // namespace fatturapa
