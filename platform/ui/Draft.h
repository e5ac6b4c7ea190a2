#pragma once
#include "platform/data/RecordSession.h"

#include <QDateTime>
#include <QVariantMap>

namespace ui {

/// What tells a draft from others to whoever chooses among them.
struct DraftTitle
{
    QString kind;        ///< "Bolla di carico"
    QString record;      ///< "n. 24", "nuovo"
    QDate date;          ///< of the document
    QString counterpart; ///< customer, supplier, whatever it is about
    QStringList rights;  ///< named rights without which nobody sees it or goes on with it
};

/// What was typed into a form and not saved, with all that the form needs to go on with it in another session.
struct Draft
{
    QString database = {}; ///< as its address is written
    QString user = {};     ///< of the program
    QDateTime time = {};   ///< when it was kept
    QString action;        ///< the command that opens the form
    DraftTitle title;
    data::RecordState record; ///< with what was stored when the form read it
    QVariantMap fields;       ///< Field::state() by name
    QVariant details;         ///< see EntryForm::detailState()
};

/// The draft as the content of a file that knows whether it is whole.
QByteArray packed(const Draft &draft);
/// The other way round. Throws core::Error for anything but a whole draft.
Draft unpacked(const QByteArray &content);

} // namespace ui
