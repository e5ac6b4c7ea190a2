#pragma once
#include "magazzino/documents/DocumentKind.h"
#include "platform/ui/ChildForm.h"

/// What forms and lists of a kind of document do alike.

/// The commands "Stampa", "Salva in PDF" and "Invia per posta" of `form`; none for a kind that is not printed.
/// `document` gives what to print when a command runs, nothing for none.
QList<ui::Command> printCommands(const DocumentKind &kind, QWidget *form,
                                 const std::function<std::optional<DocumentHead>()> &document);

/// May the user save documents of the kind and start new ones?
bool mayEdit(const DocumentKind &kind);

/// Deletes a stored document with its questions; true when it is gone. Tells the user when a right is missing.
bool deleteDocument(const DocumentKind &kind, QWidget *owner, int id);
