#pragma once
#include "host/transfer/ImportTarget.h"
#include "platform/data/Connection.h"

#include <QHash>
#include <QMetaType>

#include <optional>

namespace host {

/// A category that is named and not there: the names that are missing, each under the one before it.
struct MissingCategory
{
    int parent = 0; ///< key of the category that the first one belongs under, 0 at the top
    QStringList names;
};

/// What an import must know of the database: the codes that are there and the rows that fields refer to.
class ImportLookups
{
public:
    /// Reads them. Throws data::DatabaseError.
    ImportLookups(data::Connection &connection, const ImportTarget &target);

    /// Key of the record with `code`, or with another spelling of it.
    std::optional<int> record(const QString &code) const;
    /// Key of the row that `text` names in the table of field number `field`; nothing when there is none or several.
    std::optional<int> find(qsizetype field, const QString &text) const;
    /// What must be added to the tree of field number `field` before `path`, which find() does not find, is there;
    /// nothing when that cannot be told.
    std::optional<MissingCategory> missing(qsizetype field, const QString &path) const;

private:
    /// Text in capitals -> key; -1 for a text that several rows have.
    using Keys = QHash<QString, int>;

    /// The row's key, or -1 for several.
    std::optional<int> entry(qsizetype field, const QString &text) const;
    static Keys keysOf(data::Connection &connection, const ImportLookup &lookup);

    QString (*identity_)(const QString &);
    Keys records_;
    QList<Keys> fields_;
};

/// The targets of which the database has the table.
QList<ImportTarget> availableTargets(data::Connection &connection);

} // namespace host

Q_DECLARE_METATYPE(host::MissingCategory)
