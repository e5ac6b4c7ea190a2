#pragma once

namespace host {

class Session;
class TourDriver;

/// The part of the tour that works the host's own registers, users and settings.
void tourHost(TourDriver &driver, Session &session);

} // namespace host
