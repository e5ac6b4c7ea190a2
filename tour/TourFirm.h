#pragma once

namespace tour {

class Visit;

/// The part of the tour that starts a firm of its own: the choice of the first start, the new firm, the login, and the
/// way from an empty database to a printed delivery note, with import, export and backup.
void tourFirm(Visit &visit);

} // namespace tour
