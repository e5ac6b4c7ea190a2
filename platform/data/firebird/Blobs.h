#pragma once
#include "platform/data/firebird/Attachment.h"

#include <QByteArray>

namespace data::firebird {

/// The whole content of a blob. Throws DatabaseError.
QByteArray readBlob(ISC_QUAD id, Attachment &attachment, NativeTransaction &transaction);

/// Stores a new blob and returns its id, to be written into a row of the same transaction. Throws DatabaseError.
ISC_QUAD writeBlob(const QByteArray &content, Attachment &attachment, NativeTransaction &transaction);

} // namespace data::firebird
