#pragma once
#include "platform/ui/MailProgram.h"

struct DocumentKind;

/// The message with which the document with key `id` goes to its customer or supplier, its PDF attached: a file in
/// a folder of its own, since the mail program reads it later. Those of former messages are removed after a week.
/// Throws core::Error.
ui::Mail messaggioDi(const DocumentKind &kind, int id);
