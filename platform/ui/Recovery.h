#pragma once
#include "platform/data/Connection.h"
#include "platform/data/RecordSession.h"

#include <QHash>
#include <QObject>
#include <QVariant>

namespace ui {

/// What stands in an entry form: everything that it needs to go on where it was left.
struct FormContents
{
    data::RecordState record;
    QVariantList fields; ///< Field::state() in the order of the declaration
    QVariant details;
};

/// The contents that entry forms gave up unsaved, the last ones of each form, until it saves again. They are kept
/// beside the connection: forms may be freed meanwhile, and with the session it is over.
class Recovery : public QObject
{
    Q_OBJECT

public:
    /// The one of a connection.
    static Recovery &of(data::Connection &connection);

    /// `form` is the form's object name.
    void keep(const QString &form, const FormContents &contents);
    /// Are there contents of `form`?
    bool holds(const QString &form) const { return kept_.contains(form); }
    /// What was kept of `form`; those of an empty new record when nothing was.
    FormContents contents(const QString &form) const { return kept_.value(form); }
    /// Drops what was kept of `form`; it has saved.
    void forget(const QString &form);

Q_SIGNALS:
    /// Contents were kept or dropped, of whatever form.
    void changed();

private:
    using QObject::QObject;

    QHash<QString, FormContents> kept_;
};

} // namespace ui
