#pragma once
#include "platform/data/Connection.h"

#include <QListWidget>

namespace host {

/// What a check list shows and where its checks are stored: one row of `linkTable` for each checked item.
struct CheckedLinksSpec
{
    QString itemsSql; ///< gives ID and TESTO
    QString linkTable;
    QString ownerColumn;
    QString itemColumn;
};

/// A list of items to check, for records that are linked to many others.
class CheckedLinks : public QListWidget
{
    Q_OBJECT

public:
    /// An empty list, until fill().
    CheckedLinks(const CheckedLinksSpec &spec, QWidget *parent);

    /// Lists the items as they are in the database now, none checked.
    void fill(data::Connection &connection);
    /// Checks what is stored for `owner` (compared without case when it is a text).
    void load(const QVariant &owner, data::Connection &connection);
    /// Stores what is checked for `owner`; inside the caller's transaction.
    void write(const QVariant &owner, data::Connection &connection) const;
    /// Keys of the items that are checked, in their order.
    QList<int> checkedKeys() const;
    /// The same for setChecked(), which checks those of them that are listed, and no others.
    QVariant checked() const { return QVariant::fromValue(checkedKeys()); }
    /// Checks the items with these keys, as checked() gives them, and takes the check from all others.
    void setChecked(const QVariant &keys);

Q_SIGNALS:
    /// The user checked an item, or took the check back.
    void edited();

private:
    CheckedLinksSpec spec_;
};

} // namespace host
