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
    /// At most `most` of those that have every word of `text` in code or description, each group of
    /// data::WordIndex::find() by code.
    QList<VoceCatalogo> find(const QString &text, qsizetype most) const;
    /// Key of the one with the whole code, compared without case, as the database has it now; -1 for none. Throws
    /// data::DatabaseError.
    int keyOf(const QString &codice) const;

private:
    QString tipo_;
    QList<VoceCatalogo> voci_;
    data::WordIndex words_;
    QDateTime readAt_;
};

/// Pieces on hand after all movements, by code as given; a code without movements is missing. Throws
/// data::DatabaseError.
QHash<QString, double> GiacenzeAttuali(const QStringList &codici);
