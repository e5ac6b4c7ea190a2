#pragma once

#include "platform/data/Connection.h"

class QWidget;

namespace host {

/// Shows the program's options (table OPZIONI) in a modal dialog and stores what was changed.
void editOptions(QWidget *owner, data::Connection &connection);
/// The same for those about printing, filing and sending documents.
void editDocumentOptions(QWidget *owner, data::Connection &connection);

} // namespace host
