#pragma once
#include "platform/data/WordIndex.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>

/// An article or a service as it is offered to somebody who types a part of it.
struct VoceCatalogo
{
    int id = -1; ///< IDANA_MAGA or IDSERVIZIO
    QString codice;
    QString descrizione;
    QString um;
    double prezzo = 0; ///< EUR per unit
    double costo = 0;  ///< EUR per unit
};

/// What a whole code stands for.
struct CodiceTrovato
{
    int id = -1;      ///< of the article or service; -1 for none
    double pezzi = 1; ///< that the code stands for, more than one only by a barcode
};

/// The articles or the services of the firm, held in memory: searching them by a key's stroke asks nobody.
class Catalogo
{
public:
    /// Of the rows of one type, tipoRiga::articolo or tipoRiga::servizio; empty until it is loaded.
    explicit Catalogo(const QString &tipo);

    /// Were they ever read?
    bool isLoaded() const { return readAt_.isValid(); }
    /// Reads them all, unless that was done a moment ago. Throws data::DatabaseError; what was read before stays.
    void refresh();
    /// At most `most` of those that have every word of `text` in code, description or barcodes, each group of
    /// data::WordIndex::find() by code.
    QList<VoceCatalogo> find(const QString &text, qsizetype most) const;
    /// Key of the article or service with this code of its own, compared without case, as the database has it now; -1
    /// for none. Throws data::DatabaseError.
    int trovaCodice(const QString &codice) const;
    /// What the whole code stands for, compared without case, as the database has it now: a plain code goes first,
    /// then, for articles, their barcodes, then what a GS1 code says. Throws data::DatabaseError.
    CodiceTrovato trova(const QString &codice) const;

private:
    QString tipo_;
    QList<VoceCatalogo> voci_;
    data::WordIndex words_;
    QDateTime readAt_;
};

/// Pieces on hand after all movements, by code as given; a code without movements is missing. Throws
/// data::DatabaseError.
QHash<QString, double> GiacenzeAttuali(const QStringList &codici);
