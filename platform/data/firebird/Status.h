#pragma once
#include <QString>

#include <ibase.h>

namespace data::firebird {

/// What a call of the client library has answered. Pass it as the call's first argument.
class Status
{
public:
    operator ISC_STATUS *() { return vector_; } // NOLINT(google-explicit-constructor)

    /// Did the call fail? Warnings do not count.
    bool failed() const { return vector_[0] == isc_arg_gds && vector_[1] != 0; }
    /// The first error's code, 0 for success.
    ISC_STATUS code() const { return failed() ? vector_[1] : 0; }
    /// True when one of the errors has this code.
    bool has(ISC_STATUS code) const;
    /// The engine's words for all errors, joined by " - ".
    QString text() const;
    /// The items of the vector as the client library writes them.
    ///@{
    const ISC_STATUS *begin() const { return vector_; }
    const ISC_STATUS *end() const { return vector_ + ISC_STATUS_LENGTH; }
    ///@}

    /// Throws DatabaseError after a failure; `context` is what was being done, without any value.
    void require(const QString &context) const;

private:
    ISC_STATUS_ARRAY vector_{};
};

} // namespace data::firebird
