#pragma once
#include "magazzino/fatturapa/Fattura.h"

#include <QHash>
#include <QStringList>

class QWidget;

/// Work on many electronic invoices: behind a progress dialog with "Annulla" when they are more than a few. What was
/// done before a cancellation or a failure stays done.

/// What was found in each invoice that was looked at, by its key.
using RiscontriFatture = QHash<int, QList<fatturapa::Riscontro>>;

/// Checks the invoices with these keys; those that were not reached are missing. Throws data::DatabaseError.
RiscontriFatture controllaFatture(QWidget *owner, const QList<int> &fatture);

/// What came of scriviFile().
struct FileScritti
{
    int nuovi = 0;
    int giaScritti = 0;          ///< put into the folder once more, as they are registered
    int modificateDopoInvio = 0; ///< of those: the invoice is another by now
    RiscontriFatture riscontri;
    QString errore; ///< what ended the work; empty when nothing did
};

/// Writes the files of the invoices with these keys into `cartella`; one with findings that prevent it gets none.
FileScritti scriviFile(QWidget *owner, const QList<int> &fatture, const QString &cartella);

/// What is to be told of it, a line each; without what ended it.
QString testoDi(const FileScritti &scritti);

/// The receipts in `percorsi`, files and folders: of a folder those files that have a receipt's name.
QStringList ricevuteIn(const QStringList &percorsi);

/// Reads the receipts and stores them. Returns what is to be told of them, a line each: how many, and the names of
/// those that were read before, that belong to no file of ours or that are none.
QStringList leggiRicevute(QWidget *owner, const QStringList &file);
