#pragma once

namespace host {
class Session;
}

namespace tour {

class Visit;

/// The part of the tour that works the host's own registers, users and settings.
void tourHost(Visit &visit, host::Session &session);

} // namespace tour
