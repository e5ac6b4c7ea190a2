#include "platform/data/firebird/Attachment.h"

#include "platform/core/Log.h"
#include "platform/data/DatabaseError.h"
#include "platform/data/EnginePath.h"
#include "platform/data/WaitLimits.h"
#include "platform/data/firebird/OpenFailures.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

using namespace Qt::StringLiterals;

namespace data::firebird {

namespace {

void addText(QByteArray &parameters, char item, const QByteArray &text)
{
    // A length byte limits each item; longer names or passwords do not exist in Firebird.
    const QByteArray cut = text.left(255);
    parameters.append(item).append(static_cast<char>(cut.size())).append(cut);
}

void addSeconds(QByteArray &parameters, char item, int seconds)
{
    parameters.append(item).append(char{4});
    for (int shift = 0; shift < 32; shift += 8)
        parameters.append(static_cast<char>((seconds >> shift) & 0xff));
}

QByteArray attachParameters(const DatabaseAddress &address)
{
    QByteArray parameters;
    parameters.append(static_cast<char>(isc_dpb_version1));
    addText(parameters, static_cast<char>(isc_dpb_user_name), address.user.toUtf8());
    if (!address.password.isEmpty())
        addText(parameters, static_cast<char>(isc_dpb_password), address.password.toUtf8());
    addText(parameters, static_cast<char>(isc_dpb_lc_ctype), "UTF8");
    if (!address.isEmbedded())
        addSeconds(parameters, static_cast<char>(isc_dpb_connect_timeout), waitLimits().answer);
    return parameters;
}

Attached attachWithoutLimit(const DatabaseAddress &address)
{
    Status status;
    Attached attached;
    const QByteArray parameters = attachParameters(address);
    const QByteArray name = attachName(address).toUtf8();
    isc_attach_database(status, 0, name.constData(), &attached.handle, static_cast<short>(parameters.size()),
                        parameters.constData());
    if (status.failed())
        attached.check = {.failure = openFailure(status, address.isEmbedded()), .databaseText = status.text()};
    return attached;
}

/// An attempt that its thread finishes, and somebody who may have stopped waiting for it.
struct Attempt
{
    std::mutex mutex;
    std::condition_variable finished;
    bool isFinished = false;
    bool isAbandoned = false;
    Attached result;
};

// The client library itself limits only the first part of a connection; a machine that is switched off or a server that
// falls silent behind it would hold the caller for minutes, or for ever.
void attachInThread(const DatabaseAddress &address, const std::shared_ptr<Attempt> &attempt)
{
    Attached result = attachWithoutLimit(address);
    const std::lock_guard lock(attempt->mutex);
    attempt->result = result;
    attempt->isFinished = true;
    attempt->finished.notify_one();
    Status ignored;
    if (attempt->isAbandoned && result.handle)
        isc_detach_database(ignored, &result.handle);
}

QByteArray parametersOf(Access access)
{
    QByteArray parameters;
    const auto add = [&parameters](std::initializer_list<int> items) {
        for (const int item : items)
            parameters.append(static_cast<char>(item));
    };
    add({isc_tpb_version3});
    switch (access) {
    case Access::Write:
        add({isc_tpb_write, isc_tpb_concurrency, isc_tpb_wait});
        addSeconds(parameters, static_cast<char>(isc_tpb_lock_timeout), waitLimits().lock);
        break;
    case Access::WriteAtOnce:
        add({isc_tpb_write, isc_tpb_read_committed, isc_tpb_rec_version, isc_tpb_nowait});
        break;
    case Access::Read:
        add({isc_tpb_read, isc_tpb_concurrency, isc_tpb_nowait});
        break;
    case Access::ReadLatest:
        add({isc_tpb_read, isc_tpb_read_committed, isc_tpb_rec_version, isc_tpb_nowait});
        break;
    }
    return parameters;
}

} // namespace

QString attachName(const DatabaseAddress &address)
{
    return address.isEmbedded() ? enginePath(address.file) : address.toString();
}

Attached attach(const DatabaseAddress &address)
{
    if (address.isEmbedded())
        return attachWithoutLimit(address);
    const auto attempt = std::make_shared<Attempt>();
    std::thread([address, attempt] { attachInThread(address, attempt); }).detach();
    std::unique_lock lock(attempt->mutex);
    // The library's own limit comes first where it holds.
    const std::chrono::seconds limit(waitLimits().answer + 1);
    if (attempt->finished.wait_for(lock, limit, [&attempt] { return attempt->isFinished; }))
        return attempt->result;
    attempt->isAbandoned = true;
    return {.check = {.failure = OpenFailure::Unreachable, .databaseText = u"no answer from the server"_s}};
}

Attachment::Attachment(const DatabaseAddress &address)
    : address_(address)
{
    const Attached attached = attach(address);
    const bool lost = attached.check.failure == OpenFailure::Unreachable;
    if (attached.check.failure != OpenFailure::None)
        throw DatabaseError(attached.check.databaseText, u"CONNECT"_s, lost ? Refusal::ConnectionLost : Refusal::Other);
    handle_ = attached.handle;
}

Attachment::~Attachment()
{
    Status status;
    call([&] { isc_detach_database(status, &handle_); });
    if (!status.failed())
        return;
    // It must not live on with its locks, or this program itself would wait for them.
    core::logLine(u"chiusura"_s, status.text());
    abandon();
    Status ignored;
    call([&] { isc_detach_database(ignored, &handle_); });
}

void Attachment::cancel()
{
    // Refused where there is nothing to cancel.
    Status ignored;
    fb_cancel_operation(ignored, &handle_, fb_cancel_raise);
}

void Attachment::abandon()
{
    Status ignored;
    fb_cancel_operation(ignored, &handle_, fb_cancel_abort);
}

NativeTransaction::NativeTransaction(Attachment &attachment, Access access)
    : attachment_(attachment)
{
    const QByteArray parameters = parametersOf(access);
    Status status;
    attachment_.call([&] {
        isc_start_transaction(status, &handle_, 1, attachment_.handle(), static_cast<unsigned short>(parameters.size()),
                              parameters.constData());
    });
    status.require(u"BEGIN"_s);
}

NativeTransaction::~NativeTransaction()
{
    if (!handle_)
        return;
    Status ignored;
    attachment_.call([&] { isc_rollback_transaction(ignored, &handle_); });
}

Status NativeTransaction::execute(const QString &sql)
{
    Status status;
    const QByteArray text = sql.toUtf8();
    attachment_.call([&] {
        isc_dsql_execute_immediate(status, attachment_.handle(), &handle_, 0, text.constData(), SQL_DIALECT_V6,
                                   nullptr);
    });
    return status;
}

void NativeTransaction::commit()
{
    Status status;
    attachment_.call([&] { isc_commit_transaction(status, &handle_); });
    // Behind another error it only tells what that one has prevented.
    if (status.code() == isc_no_meta_update)
        throw DatabaseError(status.text(), u"COMMIT"_s, Refusal::DefinitionNotMade);
    status.require(u"COMMIT"_s);
}

void NativeTransaction::rollback()
{
    Status status;
    attachment_.call([&] { isc_rollback_transaction(status, &handle_); });
    status.require(u"ROLLBACK"_s);
}

} // namespace data::firebird
