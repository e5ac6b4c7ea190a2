#pragma once
#include "platform/data/ConnectionString.h"

#include <memory>

namespace data {

/// A row that is inserted and never committed: as long as the object lives, no other session can insert the same one. A
/// session that ends, in whichever way, lets go of it. The row's table can be read and written, but not redefined
/// meanwhile.
class HeldRow
{
public:
    /// `insert` is the statement that inserts the row, whose key must be unique and never committed. Null when another
    /// session holds the row. Waits for nobody. Throws DatabaseError for everything else that goes wrong.
    static std::unique_ptr<HeldRow> tryToHold(const DatabaseAddress &address, const QString &insert);
    ~HeldRow();
    HeldRow(const HeldRow &) = delete;
    HeldRow &operator=(const HeldRow &) = delete;

private:
    struct Session;
    explicit HeldRow(std::unique_ptr<Session> session);

    std::unique_ptr<Session> session_;
};

} // namespace data
