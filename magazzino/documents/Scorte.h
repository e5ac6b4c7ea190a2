#pragma once
#include "magazzino/documents/DocumentKind.h"

#include <QHash>
#include <QStringList>

/// What is known of an article's stock while a document with it is written. The document's own movements are left out,
/// so that it counts once, with the rows that it has now.
struct Scorta
{
    double oggi = 0;       ///< pieces on hand today
    double allaData = 0;   ///< at the document's date
    double costoMedio = 0; ///< EUR per unit at the document's date; 0 without stock
    QDate dataAcquisto;    ///< of the last receipt; invalid for none
    double costoAcquisto = 0;
    QDate dataVendita; ///< of the last issue to the document's customer; invalid for none
    double prezzoVendita = 0;
};

/// Of which document.
struct ScorteDi
{
    const DocumentKind *kind = nullptr;
    DocumentHead head;
    QString cliente;         ///< its code; empty for none, and for a supplier
    bool conFatture = false; ///< invoices may be seen
};

/// By code as given; all of them are there. One statement asks for all of a document's usual size. Throws
/// data::DatabaseError.
QHash<QString, Scorta> LeggiScorte(const ScorteDi &documento, const QStringList &codici);

/// May what is told of stock, prices and customers be another one once these tables were written to?
bool ToccaLeGiacenze(const QStringList &tabelle);
