#pragma once
#include <QString>

#include <QWidget>
#include <functional>

/// The one front of the account's mail program.
namespace ui {

/// A message that the user reads, and sends, in the mail program.
struct Mail
{
    QString to;
    QString subject;
    QString text;
    QString attachment; ///< path of a file
};

enum class MailOpened
{
    WithAttachment,
    WithoutAttachment, ///< the user has to attach the file
    NotAtAll
};

using MailOpener = std::function<MailOpened(const Mail &)>;
/// Replaces the mail program and returns what stood for it before; an empty one restores it.
MailOpener setMailOpener(MailOpener opener);
/// Opens a new message in the mail program. Nothing is sent by that. What the user has to do by hand, as with a program
/// that takes no attachments, is told in a box over `owner`.
void openMail(QWidget *owner, const Mail &mail);

} // namespace ui
