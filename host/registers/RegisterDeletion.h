#pragma once
#include "host/registers/RegisterSpec.h"

class QObject;

namespace host {

/// Deletes a record of a register after the question, unless something uses it; tells `owner` what does. Returns true
/// when the record is gone. Throws data::DatabaseError.
bool deleteRegisterRecord(const RegisterSpec &spec, int id, data::Connection &connection, QObject *owner);

} // namespace host
