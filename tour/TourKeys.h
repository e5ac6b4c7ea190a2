#pragma once

namespace host {
class Session;
}

namespace tour {

class Visit;

/// A goods receipt and a delivery note, from the empty form to the PDF file by nothing but keys, which are counted.
void tourKeys(Visit &visit, host::Session &session);

} // namespace tour
