#pragma once
#include "magazzino/fatturapa/Fattura.h"
#include "platform/data/Connection.h"

#include <functional>

/// The register of the files that were written: what stands in it was given away and never changes but for its state.
namespace fatturapa {

/// What became of an invoice on its way to the exchange system, as it is shown and, once there is a file, stored.
namespace stato {
inline const QString daFare = QStringLiteral("da fare");
inline const QString conRilievi = QStringLiteral("con rilievi");
inline const QString scritta = QStringLiteral("scritta");
inline const QString inviata = QStringLiteral("inviata"); ///< by hand: only the user knows
inline const QString nonConsegnata = QStringLiteral("non consegnata");
inline const QString consegnata = QStringLiteral("consegnata");
inline const QString scartata = QStringLiteral("scartata");
} // namespace stato

/// Shown beside the state of an invoice that was saved again after its file was written.
inline const QString modificataDopoInvio = QStringLiteral("modificata dopo l'invio");

/// A file of the register, without its bytes.
struct FileRegistrato
{
    int id = -1;
    QString nome;
    QString stato;
    bool modificata = false; ///< the invoice was saved again since
};

/// The newest file of the accompanying invoice with key `fattura`; nothing when there is none. Throws
/// data::DatabaseError, as all of these.
std::optional<FileRegistrato> ultimoFile(data::Connection &connection, int fattura);

/// The bytes of a file by its key, as they were written. Throws core::Error when there is no such file.
QByteArray contenutoDi(data::Connection &connection, int file);

/// What came of registra().
struct Esito
{
    QString nome;               ///< of the file; empty when there is none
    QByteArray contenuto;       ///< its bytes, as the register has them
    bool nuovo = false;         ///< written now; else they are those of an earlier time
    bool modificata = false;    ///< the invoice is another by now, but its file was sent
    QList<Riscontro> riscontri; ///< what was found in an invoice that got a new file, or none
};

/// The file of an accompanying invoice, made and registered in one transaction when there is none yet, when the one
/// that there is was refused, or was not sent and the invoice has changed since; else the registered one. A name is
/// never given twice, whoever asks at the same moment, nor one of which `occupato` says that it is taken. Throws
/// core::Error for an invoice that is gone.
Esito registra(data::Connection &connection, int fattura, const QString &utente,
               const std::function<bool(const QString &nome)> &occupato);

/// Notes that the invoice was saved; to be called in the transaction that saves it, behind what locks its row. Returns
/// its newest file as it is then; nothing when there is none.
std::optional<FileRegistrato> segnaModificata(data::Connection &connection, int fattura);

/// Moves a file from the state `da` to `a`, which counts from the moment `quando`. Does nothing when it is in another
/// state by now: another workstation may have read a receipt.
void spostaStato(data::Connection &connection, int file, const QString &da, const QString &a, const QDateTime &quando);

/// Hexadecimal SHA-256 of `contenuto`.
QString improntaDi(const QByteArray &contenuto);

} // namespace fatturapa
