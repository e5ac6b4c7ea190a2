#pragma once
#include "platform/ui/RegisterSpec.h"

class QObject;

namespace ui {

/// Deletes a record of a register after the question, unless something uses it; tells `owner` what does. Returns true
/// when the record is gone. Throws data::DatabaseError.
bool deleteRegisterRecord(const RegisterSpec &spec, int id, data::Connection &connection, QObject *owner);

} // namespace ui
