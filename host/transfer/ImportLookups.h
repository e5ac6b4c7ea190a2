#pragma once
#include "host/transfer/ImportTarget.h"

#include <QHash>

#include <optional>

namespace data {
class Connection;
}

namespace host {

/// What an import must know of the database: the codes that are there and the rows that fields refer to.
class ImportLookups
{
public:
    /// Reads them. Throws data::DatabaseError.
    ImportLookups(data::Connection &connection, const ImportTarget &target);

    /// Key of the record with `code`, compared without case.
    std::optional<int> record(const QString &code) const;
    /// Key of the row that `text` names in the table of field number `field`; nothing when there is none or several.
    std::optional<int> find(qsizetype field, const QString &text) const;

private:
    /// Text in capitals -> key; -1 for a text that several rows have.
    using Keys = QHash<QString, int>;

    static Keys keysOf(data::Connection &connection, const ImportLookup &lookup);

    Keys records_;
    QList<Keys> fields_;
};

/// The targets of which the database has the table.
QList<ImportTarget> availableTargets(data::Connection &connection);

} // namespace host
