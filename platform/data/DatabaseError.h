#pragma once
#include "platform/core/Error.h"

namespace data {

/// What callers tell apart among the database's refusals.
enum class Refusal
{
    Other,
    ConnectionLost,    ///< the server is gone, does not answer, or has thrown the connection out
    DefinitionNotMade, ///< definitions that were understood could not be carried out at the COMMIT
};

/// A refused statement or connection. The text is the database's own, except for what the user can do something about:
/// a full disk ("Il disco è pieno.") and a lost server have words of the program, and the database's stand in the
/// context, which names verb and table.
class DatabaseError : public core::Error
{
public:
    /// `databaseText`: what the database said; `statement`: see statementKind().
    explicit DatabaseError(const QString &databaseText, const QString &statement = {},
                           Refusal refusal = Refusal::Other);

    /// Was the disk full?
    bool isDiskFull() const;
    /// Why it was refused, as far as the program goes on differently.
    Refusal refusal() const { return refusal_; }

private:
    Refusal refusal_;
};

} // namespace data
