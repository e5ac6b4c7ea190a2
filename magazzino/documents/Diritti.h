#pragma once
#include "magazzino/documents/DocumentKind.h"

/// What the current user may do with documents, as the database has it now. Throws data::DatabaseError.

/// Does the user hold the named right? Everybody does while it is empty.
bool haDiritto(const QString &diritto);

/// May the user see stored documents of the kind? Others get one copy and leave nothing in the archive.
bool puoVedere(const DocumentKind &kind);
