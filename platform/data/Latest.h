#pragma once
#include "platform/data/Connection.h"

namespace data {

/// As connection.run() for a query of single rows, which are read as they are now. Outside a transaction it takes part
/// in a standing one where run() begins and ends one of its own; over a network that is three times as much. Rows that
/// must fit together, sums among them, need run() or a Transaction.
Rows latest(Connection &connection, const QString &sql, const QVariantList &values = {});

/// While it lives, all queries of this thread are run so; for the data set that reads single rows.
class LatestRows
{
public:
    LatestRows();
    ~LatestRows();
    LatestRows(const LatestRows &) = delete;
    LatestRows &operator=(const LatestRows &) = delete;
};

} // namespace data
