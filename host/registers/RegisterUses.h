#pragma once
#include "host/registers/RegisterSpec.h"

class QObject;

namespace host {

/// What uses the record with key `id`, a line each: "righe di D.d.T.: 3"; empty when nothing does. Tables of modules
/// that are not there do not count. Reads from `connection`; throws data::DatabaseError.
QStringList usesOf(const QList<RegisterUse> &uses, int id, data::Connection &connection);

/// Deletes a record of a register after the question, unless something uses it; tells `owner` what does. Returns true
/// when the record is gone. Throws data::DatabaseError.
bool deleteRegisterRecord(const RegisterSpec &spec, int id, data::Connection &connection, QObject *owner);

} // namespace host
