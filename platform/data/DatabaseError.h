#pragma once
#include "platform/core/Error.h"

namespace data {

/// A refused statement or connection. The text is the database's own, except for a full disk, which the user can do
/// something about: "Il disco è pieno."; the context names verb and table, and the database's words then.
class DatabaseError : public core::Error
{
public:
    /// `databaseText`: what the database said; `statement`: see statementKind().
    DatabaseError(const QString &databaseText, const QString &statement);

    bool isDiskFull() const;
};

} // namespace data
