#pragma once
#include "platform/core/Error.h"

namespace data {

/// What callers tell apart among the database's refusals.
enum class Refusal
{
    Other,
    ConnectionLost,  ///< the server is gone, does not answer, or has thrown the connection out
    MetadataNotMade, ///< a definition that the database could not carry out ("unsuccessful metadata update")
};

/// A refused statement or connection. The text is the database's own, except for a full disk, which the user can do
/// something about: "Il disco è pieno."; the context names verb and table, and the database's words then.
class DatabaseError : public core::Error
{
public:
    /// `databaseText`: what the database said; `statement`: see statementKind().
    explicit DatabaseError(const QString &databaseText, const QString &statement = {},
                           Refusal refusal = Refusal::Other);

    bool isDiskFull() const;
    Refusal refusal() const { return refusal_; }

private:
    Refusal refusal_;
};

} // namespace data
