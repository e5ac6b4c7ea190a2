#pragma once
#include "magazzino/fatturapa/Dati.h"
#include "platform/data/Connection.h"
#include "platform/data/Rows.h"

/// What an electronic invoice is made from, out of the database: the one place with the statements for it.

namespace fatturapa {

/// What a query gave, one record for each row.
QList<Record> recordDi(const data::Rows &righe);

/// The invoice with key `id` and the rows of the registers that it names, as of now; `progressivo` goes into the file's
/// name. The invoice's own row is empty when there is none. Throws data::DatabaseError.
Dati leggi(int id, const QString &progressivo);
/// The same over a connection of one's own, as background work needs.
Dati leggi(data::Connection &connection, int id, const QString &progressivo);

} // namespace fatturapa
