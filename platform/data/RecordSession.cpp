#include "platform/data/RecordSession.h"

#include "platform/data/DataSet.h"

using namespace Qt::StringLiterals;

namespace data {

const QString &RecordSession::key() const
{
    return record_->updateTarget().key;
}

void RecordSession::fetch(int id)
{
    record_->close();
    record_->setParameter(key(), id);
    record_->open();
    if (!details_)
        return;
    details_->close();
    details_->setParameter(key(), id);
    details_->open();
    // The database returns rewritten rows in any order; their keys keep the order in which they were entered.
    details_->sortByInteger(details_->updateTarget().key);
}

bool RecordSession::read(int id, const std::function<void()> &further)
{
    Transaction transaction(*record_->connection());
    fetch(id);
    if (!record_->isEmpty())
        further();
    transaction.commit();
    if (record_->isEmpty())
        return false;
    const int found = record_->integer(key());
    state_ = {.id = found, .isNew = false, .known = {*record_, details_}, .knownKey = found};
    return true;
}

bool RecordSession::write(Expected expected, const std::function<void(DataSet &)> &fill,
                          const std::function<void()> &writeDetails)
{
    replacedKey_ = -1;
    Transaction transaction(*record_->connection());
    if (state_.storedKey() >= 0 && !findsAsExpected(expected))
        return false;
    beginRow();
    record_->setValue(key(), state_.id);
    fill(*record_);
    record_->updateBatch();
    state_.id = record_->integer(key());
    writeDetails();
    transaction.commit();
    state_.known = {*record_, details_};
    state_.knownKey = state_.id;
    state_.keyWithoutRow = false;
    replacedKey_ = -1;
    return true;
}

void RecordSession::writeFailed()
{
    state_.keyWithoutRow = state_.keyWithoutRow || state_.isNew;
    if (replacedKey_ >= 0)
        state_.id = std::exchange(replacedKey_, -1);
}

// Reads what is stored now, inside the transaction.
bool RecordSession::findsAsExpected(Expected expected)
{
    fetch(state_.id);
    const StoredValues before = std::exchange(found_, {*record_, details_});
    if (expected == Expected::Found)
        return found_ == before;
    // A key that was given from outside was never read.
    return state_.knownKey == state_.id ? found_ == state_.known : !found_.isMissing();
}

// Stands on the row that is to be written, with the key that it shall have.
void RecordSession::beginRow()
{
    if (state_.isNew) {
        takeNewKey();
    } else if (state_.keyWithoutRow) {
        fetch(state_.id);
        // With no row under the key, edit() starts a new one. A row under a key that a failed save had only predicted
        // belongs to another workstation: leave it alone and take a new key.
        if (record_->isEmpty())
            record_->edit();
        else
            takeNewKey();
    } else if (record_->isEmpty()) {
        // The table gives every new row a new key.
        replacedKey_ = state_.id;
        takeNewKey();
    } else {
        record_->edit();
    }
}

// The predicted key is the one that the trigger gives as long as nobody else inserts in between; updateBatch() reads
// back the key really given.
void RecordSession::takeNewKey()
{
    state_.id = record_->connection()->lastGeneratorValue(u"GN_"_s + key()) + 1;
    record_->close();
    record_->setParameter(key(), state_.id);
    record_->open();
    record_->append();
}

} // namespace data
