#pragma once
#include "platform/data/Connection.h"
#include "platform/ui/Drafts.h"

class QWidget;

/// Documents that were being written when the program ended without being able to ask.
namespace host {

/// The drafts that the current user may go on with, the newest first; what is no draft is told and put aside.
QList<ui::KeptDraft> waitingDrafts(QWidget *owner, data::Connection &connection);

/// Shows them and does with them what the user wants; nothing when there are none. Drafts that are neither taken up
/// nor removed are offered again.
void offerDrafts(QWidget *owner, data::Connection &connection);

} // namespace host
