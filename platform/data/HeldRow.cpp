#include "platform/data/HeldRow.h"

#include "platform/data/SqlText.h"
#include "platform/data/firebird/Attachment.h"

namespace data {

struct HeldRow::Session
{
    explicit Session(const DatabaseAddress &address)
        : attachment(address)
        , transaction(attachment, firebird::Access::WriteAtOnce)
    {
    }

    firebird::Attachment attachment;
    firebird::NativeTransaction transaction;
};

HeldRow::HeldRow(std::unique_ptr<Session> session)
    : session_(std::move(session))
{
}

HeldRow::~HeldRow() = default;

std::unique_ptr<HeldRow> HeldRow::tryToHold(const DatabaseAddress &address, const QString &insert)
{
    auto session = std::make_unique<Session>(address);
    const firebird::Status status = session->transaction.execute(insert);
    // Without waiting the engine takes a row that may yet vanish for one that is there.
    if (status.has(isc_unique_key_violation) || status.has(isc_lock_conflict))
        return nullptr;
    status.require(statementKind(insert));
    return std::unique_ptr<HeldRow>(new HeldRow(std::move(session)));
}

} // namespace data
