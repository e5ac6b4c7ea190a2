#pragma once
#include "platform/data/Connection.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

/// What the exchange system answers to a file, as the XML that it sends.
namespace fatturapa {

struct ErroreRicevuta
{
    QString codice;
    QString descrizione; ///< with what it proposes
};

struct Ricevuta
{
    QString tipo;      ///< RC, NS, MC, DT or AT
    QString nomeFile;  ///< of the invoice
    QDateTime momento; ///< of which it tells; invalid where it says nothing
    QList<ErroreRicevuta> errori;
};

/// Reads a receipt. Throws core::Error with the reason for what is none: another kind of document, XML that breaks off,
/// any document type definition.
Ricevuta leggiRicevuta(const QByteArray &xml);

/// What came of a receipt.
struct RicevutaRegistrata
{
    enum class Esito
    {
        Registrata,
        GiaLetta,
        FileSconosciuto ///< the register has no file of that name; nothing was stored
    };
    Esito esito = Esito::Registrata;
    Ricevuta ricevuta;
};

/// Stores the receipt `xml`, which came as a file named `nome`, with the invoice file that it names, and moves that
/// one's state; never back. Throws as leggiRicevuta(), and data::DatabaseError.
RicevutaRegistrata registraRicevuta(data::Connection &connection, const QByteArray &xml, const QString &nome,
                                    const QString &utente);

/// The receipts of an invoice file by its key, in the order in which they were read.
QList<Ricevuta> ricevuteDi(data::Connection &connection, int file);

} // namespace fatturapa
