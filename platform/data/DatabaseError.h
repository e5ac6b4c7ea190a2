#pragma once
#include "platform/core/Error.h"

namespace data {

/// A refused statement or connection. The text is the database's own; the context names verb and table.
class DatabaseError : public core::Error
{
public:
    using Error::Error;
};

} // namespace data
