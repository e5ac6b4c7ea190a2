#include "platform/data/firebird/Blobs.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace data::firebird {

namespace {

constexpr unsigned short mostPerSegment = 65535;
const QString context = u"BLOB"_s;

// Closed in any case; the first failure is the one to tell.
void close(isc_blob_handle &blob, Attachment &attachment, const Status &before)
{
    Status status;
    attachment.call([&] { isc_close_blob(status, &blob); });
    before.require(context);
    status.require(context);
}

} // namespace

QByteArray readBlob(ISC_QUAD id, Attachment &attachment, NativeTransaction &transaction)
{
    Status status;
    isc_blob_handle blob = 0;
    attachment.call([&] { isc_open_blob2(status, attachment.handle(), transaction.handle(), &blob, &id, 0, nullptr); });
    status.require(context);
    QByteArray content;
    QByteArray segment(mostPerSegment, Qt::Uninitialized);
    // A segment longer than the room for it comes in parts, each announced by isc_segment.
    while (!status.failed() || status.code() == isc_segment) {
        unsigned short length = 0;
        attachment.call([&] { isc_get_segment(status, &blob, &length, mostPerSegment, segment.data()); });
        if (!status.failed() || status.code() == isc_segment)
            content.append(segment.constData(), length);
    }
    close(blob, attachment, status.code() == isc_segstr_eof ? Status() : status);
    return content;
}

ISC_QUAD writeBlob(const QByteArray &content, Attachment &attachment, NativeTransaction &transaction)
{
    Status status;
    ISC_QUAD id{};
    isc_blob_handle blob = 0;
    attachment.call(
        [&] { isc_create_blob2(status, attachment.handle(), transaction.handle(), &blob, &id, 0, nullptr); });
    status.require(context);
    for (qsizetype done = 0; done < content.size() && !status.failed(); done += mostPerSegment) {
        const auto length = static_cast<unsigned short>(std::min<qsizetype>(mostPerSegment, content.size() - done));
        attachment.call([&] { isc_put_segment(status, &blob, length, content.constData() + done); });
    }
    close(blob, attachment, status);
    return id;
}

} // namespace data::firebird
