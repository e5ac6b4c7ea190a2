#pragma once
#include "magazzino/MMGUtils.h"

#include <QHash>
#include <QSet>

namespace core {
class Progress;
}

/// Data services for several rows at once. Saves use them, since one row at a time a slow network is waited for again
/// and again. Errors and their texts are those of the services for one row.

/// Readers: the rows that exist, by key.
///@{
QHash<int, TAliquotaIVA> GetAliquoteIVA(const QSet<int> &ids);
QHash<int, TCodiceTesto> GetCategorieAnaMaga(const QSet<int> &ids);
QHash<int, TCodiceTesto> GetCategorieServizi(const QSet<int> &ids);
///@}

/// Writes new movements as AggiornaMoviMaga() does; each holds its key then. The caller owns the transaction.
void InserisciMoviMaga(QList<TMoviMaga> &movimenti);

/// RivalorizzaScarichiMagazzino(), in the caller's transaction on `connection`, for every code that stands in the
/// movements, which are read once; `progress` is told how far it is. A code written in several cases is revalued as
/// often. Throws data::DatabaseError when the movements cannot be read, core::Cancelled when `progress` was cancelled.
void RivalorizzaTuttiGliScarichi(data::Connection &connection, core::Progress &progress);

/// Values new movements of `date` (`valore` and `valoreImporto`), each at the cost that GetValoreScaricoCostoMedio()
/// would give once those before it were written.
void ValutaAlCostoMedio(QList<TMoviMaga> &movimenti, QDate date);
