#pragma once
#include "platform/data/Rows.h"
#include "platform/data/firebird/Attachment.h"

#include <memory>
#include <vector>

namespace data::firebird {

/// The fields of a statement's parameters or of its result, with room for one value each.
class Descriptor
{
public:
    /// Of no field yet.
    Descriptor();

    /// For the client library, which describes, fills and reads the fields.
    XSQLDA *get() { return area_.get(); }
    /// How many fields there are.
    int size() const { return area_->sqld; }
    /// Makes room for `fields`, all still undescribed.
    void reserve(int fields);
    /// Gives every described field room for its value.
    void makeRoom();

    /// Names and types of a result's fields, in their order.
    QList<Column> columns() const;

    /// What field `index` holds after a fetch; see Rows. Text blobs are read whole. Throws DatabaseError.
    QVariant value(int index, Attachment &attachment, NativeTransaction &transaction) const;

    /// Are there texts among the fields that do not come with the row itself?
    bool hasTextBlobs() const;
    /// As value(), but a text blob stays unread: an ISC_QUAD that bind() takes.
    QVariant valueUnread(int index, Attachment &attachment, NativeTransaction &transaction) const;

    /// Puts values into the fields, each as what the field has been described as. What the field does not understand is
    /// handed over as text, which the database converts or refuses. Throws DatabaseError.
    void bind(const QVariantList &values, Attachment &attachment, NativeTransaction &transaction);

private:
    struct Free
    {
        void operator()(XSQLDA *area) const;
    };
    struct Described
    {
        short type;
        short scale;
        short length;
    };

    void bindOne(int index, const QVariant &value, Attachment &attachment, NativeTransaction &transaction);
    void put(int index, short type, const QByteArray &bytes, short scale = 0);

    std::unique_ptr<XSQLDA, Free> area_;
    std::vector<Described> described_;
    std::vector<QByteArray> room_;
    std::vector<short> nulls_;
};

} // namespace data::firebird
